/* The video encoder's registers: one line a register, one field of eight bits in each.
 *
 * A help text names the register's purpose and its eight bits from bit 7 to bit 0; 0 stands for a bit that
 * has to be written as 0. Field names spell the sub-address with small hex digits up to 0x3a and with
 * capitals from 0x4A on: register files are written against that.
 */
#include "regdb/chip_regs.h"
#include "regdb/table_rows.h"

/* Sub-address, the same as the field's name spells it, initial value, help text. */
#define SAA7129_REGISTERS(R)                                                                                 \
    R(0x26, 26, 0x0d, "Wide Screen Signal - WSS7  WSS6  WSS5  WSS4 WSS3  WSS2  WSS1 WSS0 -")                 \
    R(0x27, 27, 0x00, "Wide Screen Signal - WSSON 0 WSS13 WSS12 WSS11 WSS10 WSS9 WSS8 -")                    \
    R(0x28, 28, 0x21, "Real-time control, burst start - DECCOL DECFIS BS5 BS4 BS3 BS2 BS1 BS0 -")            \
    R(0x29, 29, 0x1d, "Sync reset, burst end - SRES 0 BE5 BE4 BE3 BE2 BE1 BE0 -")                            \
    R(0x2a, 2a, 0x75, "Copy generation 0 - CG07 CG06 CG05 CG04 CG03 CG02 CG01 CG00 -")                       \
    R(0x2b, 2b, 0x3f, "Copy generation 1 - CG15 CG14 CG13 CG12 CG11 CG10 CG09 CG08 -")                       \
    R(0x2c, 2c, 0x06, "CG enable, copy generation 2 - CGEN 0 0 0 CG19 CG18 CG17 CG16 -")                     \
    R(0x2d, 2d, 0xf3, "Output port control- CVBSEN1 CVBSEN0 CVBSTRI YTRI CTRI RTRI GTRI BTRI -")             \
    R(0x38, 38, 0x1a, "Gain luminance for RGB - 0 0 0 GY4 GY3 GY2 GY1 GY0 -")                                \
    R(0x39, 39, 0x1a, "Gain color difference for RGB - 0 0 0 GCD4 GCD3 GCD2 GCD1 GCD0 -")                    \
    R(0x3a, 3a, 0x13, "Input port control 1 - CBENB 0 0 SYMP DEMOFF CSYNC MP2C2 MP2C1 -")                    \
    R(0x42, 42, 0x00, "Key 1 lower U - KEY1LU7 KEY1LU6 KEY1LU5 KEY1LU4 KEY1LU3 KEY1LU2 KEY1LU1 KEY1LU0 -")   \
    R(0x43, 43, 0x68, "Key 1 lower V - KEY1LV7 KEY1LV6 KEY1LV5 KEY1LV4 KEY1LV3 KEY1LV2 KEY1LV1 KEY1LV0 -")   \
    R(0x44, 44, 0x10, "Key 1 lower Y - KEY1LY7 KEY1LY6 KEY1LY5 KEY1LY4 KEY1LY3 KEY1LY2 KEY1LY1 KEY1LY0 -")   \
    R(0x45, 45, 0x97, "Key 2 lower U - KEY2LU7 KEY2LU6 KEY2LU5 KEY2LU4 KEY2LU3 KEY2LU2 KEY2LU1 KEY2LU0 -")   \
    R(0x46, 46, 0x4c, "Key 2 lower V - KEY2LV7 KEY2LV6 KEY2LV5 KEY2LV4 KEY2LV3 KEY2LV2 KEY2LV1 KEY2LV0 -")   \
    R(0x47, 47, 0x18, "Key 2 lower Y - KEY2LY7 KEY2LY6 KEY2LY5 KEY2LY4 KEY2LY3 KEY2LY2 KEY2LY1 KEY2LY0 -")   \
    R(0x48, 48, 0x9b, "Key 1 upper U - KEY1UU7 KEY1UU6 KEY1UU5 KEY1UU4 KEY1UU3 KEY1UU2 KEY1UU1 KEY1UU0 -")   \
    R(0x49, 49, 0x93, "Key 1 upper V - KEY1UV7 KEY1UV6 KEY1UV5 KEY1UV4 KEY1UV3 KEY1UV2 KEY1UV1 KEY1UV0 -")   \
    R(0x4a, 4A, 0x9f, "Key 1 upper Y - KEY1UY7 KEY1UY6 KEY1UY5 KEY1UY4 KEY1UY3 KEY1UY2 KEY1UY1 KEY1UY0 -")   \
    R(0x4b, 4B, 0xff, "Key 2 upper U - KEY2UU7 KEY2UU6 KEY2UU5 KEY2UU4 KEY2UU3 KEY2UU2 KEY2UU1 KEY2UU0 -")   \
    R(0x4c, 4C, 0x7c, "Key 2 upper V - KEY2UV7 KEY2UV6 KEY2UV5 KEY2UV4 KEY2UV3 KEY2UV2 KEY2UV1 KEY2UV0 -")   \
    R(0x4d, 4D, 0x34, "Key 2 upper Y - KEY2UY7 KEY2UY6 KEY2UY5 KEY2UY4 KEY2UY3 KEY2UY2 KEY2UY1 KEY2UY0 -")   \
    R(0x4e, 4E, 0x3f, "Fade factor key color 1 - 0 0 FADE15 FADE14 FADE13 FADE12 FADE11 FADE10 -")           \
    R(0x4f, 4F, 0x17, "Fade factor key color 2 - CFADEM CFADEV FADE25 FADE24 FADE23 FADE22 FADE21 FADE20 -") \
    R(0x50, 50, 0x00, "Fade factor other pixels - 0 0 FADE35 FADE34 FADE33 FADE32 FADE31 FADE30 -")          \
    R(0x51, 51, 0x83, "Look-up table key color 2 U - LUTU7 LUTU6 LUTU5 LUTU4 LUTU3 LUTU2 LUTU1 LUTU0 -")     \
    R(0x52, 52, 0x83, "Look-up table key color 2 V - LUTV7 LUTV6 LUTV5 LUTV4 LUTV3 LUTV2 LUTV1 LUTV0 -")     \
    R(0x53, 53, 0x80, "Look-up table key color 2 Y - LUTY7 LUTY6 LUTY5 LUTY4 LUTY3 LUTY2 LUTY1 LUTY0 -")     \
    R(0x54, 54, 0x8c, "VPS enable, input control 2 - VPSEN 0 ENCIN RGBIN DELIN VPSEL EDGE2 EDGE1 -")         \
    R(0x55, 55, 0x0f, "VPS byte 5 - VPS57 VPS56 VPS55 VPS54 VPS53 VPS52 VPS51 VPS50 -")                      \
    R(0x56, 56, 0xc3, "VPS byte 11 - VPS117 VPS116 VPS115 VPS114 VPS113 VPS112 VPS111 VPS110 -")             \
    R(0x57, 57, 0x06, "VPS byte 12 - VPS127 VPS126 VPS125 VPS124 VPS123 VPS122 VPS121 VPS120 -")             \
    R(0x58, 58, 0x02, "VPS byte 13 - VPS137 VPS136 VPS135 VPS134 VPS133 VPS132 VPS131 VPS130 -")             \
    R(0x59, 59, 0x80, "VPS byte 14 - VPS147 VPS146 VPS145 VPS144 VPS143 VPS142 VPS141 VPS140 -")             \
    R(0x5a, 5A, 0x34, "Chrominance phase - CHPS7 CHPS6 CHPS5 CHPS4 CHPS3 CHPS2 CHPS1 CHPS0 -")               \
    R(0x5b, 5B, 0x7d, "Gain U - GAINU7 GAINU6 GAINU5 GAINU4 GAINU3 GAINU2 GAINU1 GAINU0 -")                  \
    R(0x5c, 5C, 0xaf, "Gain V - GAINV7 GAINV6 GAINV5 GAINV4 GAINV3 GAINV2 GAINV1 GAINV0 -")                  \
    R(0x5d, 5D, 0x2d, "Gain U MSB, black level - GAINU8 DECOE BLCKL5 BLCKL4 BLCKL3 BLCKL2 BLCKL1 BLCKL0 -")  \
    R(0x5e, 5E, 0x3f, "Gain V MSB, blank level - GAINV8 DECPH BLNNL5 BLNNL4 BLNNL3 BLNNL2 BLNNL1 BLNNL0 -")  \
    R(0x5f, 5F, 0x3f, "CCR, blanking level VBI - CCRS1 CCRS0 BLNVB5 BLNVB4 BLNVB3 BLNVB2 BLNVB1 BLNVB0 -")   \
    R(0x60, 60, 0x7b, "NUll")                                                                                \
    R(0x61, 61, 0x02, "Standard Control            - DOWNB DOWNA INPI  YGS   SECAM SCBW  PAL   FISE -")      \
    R(0x62, 62, 0x2f, "RTC enable, burst amplitude - RTCE BSTA6 BSTA5 BSTA4 BSTA3 BSTA2 BSTA1 BSTA0 -")      \
    R(0x63, 63, 0xcb, "Subcarrier 0  - FSC07 FSC06 FSC05 FSC04 FSC03 FSC02 FSC01 FSC00 -")                   \
    R(0x64, 64, 0x8a, "Subcarrier 1 - FSC15 FSC14 FSC13 FSC12 FSC11 FSC10 FSC09 FSC08 -")                    \
    R(0x65, 65, 0x09, "Subcarrier 2 - FSC23 FSC22 FSC21 FSC20 FSC19 FSC18 FSC17 FSC16 -")                    \
    R(0x66, 66, 0x2a, "Subcarrier 3 - FSC31 FSC30 FSC29 FSC28 FSC27 FSC26 FSC25 FSC24 -")                    \
    R(0x67, 67, 0x77, "Line 21 odd 0 - L21O07 L21O06 L21O05 L21O04 L21O03 L21O02 L21O01 L21O00 -")           \
    R(0x68, 68, 0x41, "Line 21 odd 1 - L21O17 L21O16 L21O15 L21O14 L21O13 L21O12 L21O11 L21O10 -")           \
    R(0x69, 69, 0x88, "Line 21 even 0 - L21E07 L21E06 L21E05 L21E04 L21E03 L21E02 L21E01 L21E00 -")          \
    R(0x6a, 6A, 0x41, "Line 21 even 1 - L21E17 L21E16 L21E15 L21E14 L21E13 L21E12 L21E11 L21E10 -")          \
    R(0x6b, 6B, 0x00, "RCV port control - SRCV11 SRCV10 TRCV2 ORCV1 PRCV1 CBLF ORCV2 PRCV2 -")               \
    R(0x6c, 6C, 0x02, "Trigger control - HTRIG7 HTRIG6 HTRIG5 HTRIG4 HTRIG3 HTRIG2 HTRIG1 HTRIG0 -")         \
    R(0x6d, 6D, 0x20, "Trigger control - HTRIG10 HTRIG9 HTRIG8 VTRIG4 VTRIG3 VTRIG2 VTRIG1 VTRIG0 -")        \
    R(0x6e, 6E, 0xa0, "Multi control - SBLBN BLCKON PHRES1 PHRES0 LDEL1 LDEL0 FLC1 FLC0 -")                  \
    R(0x6f, 6F, 0xb4, "Closed caption, TTX enable - CCEN1 CCEN0 TTXEN SCCLN4 SCCLN3 SCCLN2 SCCLN1 SCCLN0 -") \
    R(0x70, 70, 0x41, "RCV2 output start - RCV2S7 RCV2S6 RCV2S5 RCV2S4 RCV2S3 RCV2S2 RCV2S1 RCV2S0 -")       \
    R(0x71, 71, 0xc3, "RCV2 output end - RCV2E7 RCV2E6 RCV2E5 RCV2E4 RCV2E3 RCV2E2 RCV2E1 RCV2E0 -")         \
    R(0x72, 72, 0x00, "MSBs RCV2 output - 0 RCV2E10 RCV2E9 RCV2E8 0 RCV2S10 RCV2S9 RCV2S8 -")                \
    R(0x73, 73, 0x3e, "TTX request H start - TTXHS7 TTXHS6 TTXHS5 TTXHS4 TTXHS3 TTXHS2 TTXHS1 TTXHS0 -")     \
    R(0x74, 74, 0xb8, "TTX request H delay - TTXHL3 TTXHL2 TTXHL1 TTXHL0 TTXHD3 TTXHD2 TTXHD1 TTXHD0 -")     \
    R(0x75, 75, 0x1e,                                                                                        \
      "CSYNC advance, V shift - CSYNCA4 CSYNCA3 CSYNCA2 CSYNCA1 CSYNCA0 VS_S2 VS_S1 VS_S0 -")                \
    R(0x76, 76, 0x15, "TTX odd start - TTXOVS7 TTXOVS6 TTXOVS5 TTXOVS4 TTXOVS3 TTXOVS2 TTXOVS1 TTXOVS0 -")   \
    R(0x77, 77, 0x16, "TTX odd end - TTXOVE7 TTXOVE6 TTXOVE5 TTXOVE4 TTXOVE3 TTXOVE2 TTXOVE1 TTXOVE0 -")     \
    R(0x78, 78, 0x15, "TTX even start - TTXEVS7 TTXEVS6 TTXEVS5 TTXEVS4 TTXEVS3 TTXEVS2 TTXEVS1 TTXEVS0 -")  \
    R(0x79, 79, 0x16, "TTX even end - TTXEVE7 TTXEVE6 TTXEVE5 TTXEVE4 TTXEVE3 TTXEVE2 TTXEVE1 TTXEVE0 -")    \
    R(0x7a, 7A, 0x2b, "First active line       - FAL7  FAL6 FAL5 FAL4 FAL3    FAL2    FAL1    FAL0 -")       \
    R(0x7b, 7B, 0xd9, "Last active line - LAL7 LAL6 LAL5 LAL4 LAL3 LAL2 LAL1 LAL0 -")                        \
    R(0x7c, 7C, 0x80, "TTX mode, MSB vertical - TTX60 LAL8 TTXO FAL8 TTXEVE8 TTXOVE8 TTXEVS8 TTXOVS8 -")     \
    R(0x7d, 7D, 0x00, "null")                                                                                \
    R(0x7e, 7E, 0x00, "Disable TTX line - LINE12 LINE11 LINE10 LINE9 LINE8 LINE7 LINE6 LINE5 -")             \
    R(0x7f, 7F, 0x00, "Disable TTX line - LINE20 LINE19 LINE18 LINE17 LINE16 LINE15 LINE14 LINE13 -")

#define SAA7129_SUB_ADDRESS(sub, field, initial, help) sub,

#define SAA7129_FIELD(sub, field, initial, help) field_array<1> bf_0x##field = byte_field("bf_0x" #field, "");
#define SAA7129_ROW(sub, field, initial, help) \
    {'X', sub, "RN_" #sub, 8, byte_value(initial), bf_0x##field.row, 1, help},

extern "C" {

constexpr uint32_t sub_addresses[] = {SAA7129_REGISTERS(SAA7129_SUB_ADDRESS)};
static_assert(std::size(sub_addresses) == 73 && ascending(sub_addresses), "a register each, in order");

SAA7129_REGISTERS(SAA7129_FIELD)

reg_bf_group regs_saa7129[] = {
    SAA7129_REGISTERS(SAA7129_ROW) end_of_table,
};
}
