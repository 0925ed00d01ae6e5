/* SPDX-License-Identifier: MIT */
/* The video encoder's registers, with their values at the start: one field of eight bits each.
 *
 * A help text names the register's purpose and its bits from 7 to 0; 0 stands for a bit that must be written
 * as 0. Values are binary, to be read against these names.
 *
 * Kept: field names spell the sub-address with small hex digits up to 0x3a and with capitals from 0x4A on.
 * Register files are written against them.
 */
#include "regdb/chip_regs.h"
#include "regdb/table_rows.h"

extern "C" {

auto bf_0x26 = byte_field("bf_0x26", "");
auto bf_0x27 = byte_field("bf_0x27", "");
auto bf_0x28 = byte_field("bf_0x28", "");
auto bf_0x29 = byte_field("bf_0x29", "");
auto bf_0x2a = byte_field("bf_0x2a", "");
auto bf_0x2b = byte_field("bf_0x2b", "");
auto bf_0x2c = byte_field("bf_0x2c", "");
auto bf_0x2d = byte_field("bf_0x2d", "");
auto bf_0x38 = byte_field("bf_0x38", "");
auto bf_0x39 = byte_field("bf_0x39", "");
auto bf_0x3a = byte_field("bf_0x3a", "");
auto bf_0x42 = byte_field("bf_0x42", "");
auto bf_0x43 = byte_field("bf_0x43", "");
auto bf_0x44 = byte_field("bf_0x44", "");
auto bf_0x45 = byte_field("bf_0x45", "");
auto bf_0x46 = byte_field("bf_0x46", "");
auto bf_0x47 = byte_field("bf_0x47", "");
auto bf_0x48 = byte_field("bf_0x48", "");
auto bf_0x49 = byte_field("bf_0x49", "");
auto bf_0x4A = byte_field("bf_0x4A", "");
auto bf_0x4B = byte_field("bf_0x4B", "");
auto bf_0x4C = byte_field("bf_0x4C", "");
auto bf_0x4D = byte_field("bf_0x4D", "");
auto bf_0x4E = byte_field("bf_0x4E", "");
auto bf_0x4F = byte_field("bf_0x4F", "");
auto bf_0x50 = byte_field("bf_0x50", "");
auto bf_0x51 = byte_field("bf_0x51", "");
auto bf_0x52 = byte_field("bf_0x52", "");
auto bf_0x53 = byte_field("bf_0x53", "");
auto bf_0x54 = byte_field("bf_0x54", "");
auto bf_0x55 = byte_field("bf_0x55", "");
auto bf_0x56 = byte_field("bf_0x56", "");
auto bf_0x57 = byte_field("bf_0x57", "");
auto bf_0x58 = byte_field("bf_0x58", "");
auto bf_0x59 = byte_field("bf_0x59", "");
auto bf_0x5A = byte_field("bf_0x5A", "");
auto bf_0x5B = byte_field("bf_0x5B", "");
auto bf_0x5C = byte_field("bf_0x5C", "");
auto bf_0x5D = byte_field("bf_0x5D", "");
auto bf_0x5E = byte_field("bf_0x5E", "");
auto bf_0x5F = byte_field("bf_0x5F", "");
auto bf_0x60 = byte_field("bf_0x60", "");
auto bf_0x61 = byte_field("bf_0x61", "");
auto bf_0x62 = byte_field("bf_0x62", "");
auto bf_0x63 = byte_field("bf_0x63", "");
auto bf_0x64 = byte_field("bf_0x64", "");
auto bf_0x65 = byte_field("bf_0x65", "");
auto bf_0x66 = byte_field("bf_0x66", "");
auto bf_0x67 = byte_field("bf_0x67", "");
auto bf_0x68 = byte_field("bf_0x68", "");
auto bf_0x69 = byte_field("bf_0x69", "");
auto bf_0x6A = byte_field("bf_0x6A", "");
auto bf_0x6B = byte_field("bf_0x6B", "");
auto bf_0x6C = byte_field("bf_0x6C", "");
auto bf_0x6D = byte_field("bf_0x6D", "");
auto bf_0x6E = byte_field("bf_0x6E", "");
auto bf_0x6F = byte_field("bf_0x6F", "");
auto bf_0x70 = byte_field("bf_0x70", "");
auto bf_0x71 = byte_field("bf_0x71", "");
auto bf_0x72 = byte_field("bf_0x72", "");
auto bf_0x73 = byte_field("bf_0x73", "");
auto bf_0x74 = byte_field("bf_0x74", "");
auto bf_0x75 = byte_field("bf_0x75", "");
auto bf_0x76 = byte_field("bf_0x76", "");
auto bf_0x77 = byte_field("bf_0x77", "");
auto bf_0x78 = byte_field("bf_0x78", "");
auto bf_0x79 = byte_field("bf_0x79", "");
auto bf_0x7A = byte_field("bf_0x7A", "");
auto bf_0x7B = byte_field("bf_0x7B", "");
auto bf_0x7C = byte_field("bf_0x7C", "");
auto bf_0x7D = byte_field("bf_0x7D", "");
auto bf_0x7E = byte_field("bf_0x7E", "");
auto bf_0x7F = byte_field("bf_0x7F", "");

// clang-format off
reg_bf_group regs_saa7129[] = {
    {'X', 0x26, "RN_0x26", 8, byte_value(0b0000'1101), bf_0x26.row, 1, "Wide Screen Signal - WSS7  WSS6  WSS5  WSS4 WSS3  WSS2  WSS1 WSS0 -"},
    {'X', 0x27, "RN_0x27", 8, byte_value(0b0000'0000), bf_0x27.row, 1, "Wide Screen Signal - WSSON 0 WSS13 WSS12 WSS11 WSS10 WSS9 WSS8 -"},
    {'X', 0x28, "RN_0x28", 8, byte_value(0b0010'0001), bf_0x28.row, 1, "Real-time control, burst start - DECCOL DECFIS BS5 BS4 BS3 BS2 BS1 BS0 -"},
    {'X', 0x29, "RN_0x29", 8, byte_value(0b0001'1101), bf_0x29.row, 1, "Sync reset, burst end - SRES 0 BE5 BE4 BE3 BE2 BE1 BE0 -"},
    {'X', 0x2a, "RN_0x2a", 8, byte_value(0b0111'0101), bf_0x2a.row, 1, "Copy generation 0 - CG07 CG06 CG05 CG04 CG03 CG02 CG01 CG00 -"},
    {'X', 0x2b, "RN_0x2b", 8, byte_value(0b0011'1111), bf_0x2b.row, 1, "Copy generation 1 - CG15 CG14 CG13 CG12 CG11 CG10 CG09 CG08 -"},
    {'X', 0x2c, "RN_0x2c", 8, byte_value(0b0000'0110), bf_0x2c.row, 1, "CG enable, copy generation 2 - CGEN 0 0 0 CG19 CG18 CG17 CG16 -"},
    {'X', 0x2d, "RN_0x2d", 8, byte_value(0b1111'0011), bf_0x2d.row, 1, "Output port control- CVBSEN1 CVBSEN0 CVBSTRI YTRI CTRI RTRI GTRI BTRI -"},
    {'X', 0x38, "RN_0x38", 8, byte_value(0b0001'1010), bf_0x38.row, 1, "Gain luminance for RGB - 0 0 0 GY4 GY3 GY2 GY1 GY0 -"},
    {'X', 0x39, "RN_0x39", 8, byte_value(0b0001'1010), bf_0x39.row, 1, "Gain color difference for RGB - 0 0 0 GCD4 GCD3 GCD2 GCD1 GCD0 -"},
    {'X', 0x3a, "RN_0x3a", 8, byte_value(0b0001'0011), bf_0x3a.row, 1, "Input port control 1 - CBENB 0 0 SYMP DEMOFF CSYNC MP2C2 MP2C1 -"},
    {'X', 0x42, "RN_0x42", 8, byte_value(0b0000'0000), bf_0x42.row, 1, "Key 1 lower U - KEY1LU7 KEY1LU6 KEY1LU5 KEY1LU4 KEY1LU3 KEY1LU2 KEY1LU1 KEY1LU0 -"},
    {'X', 0x43, "RN_0x43", 8, byte_value(0b0110'1000), bf_0x43.row, 1, "Key 1 lower V - KEY1LV7 KEY1LV6 KEY1LV5 KEY1LV4 KEY1LV3 KEY1LV2 KEY1LV1 KEY1LV0 -"},
    {'X', 0x44, "RN_0x44", 8, byte_value(0b0001'0000), bf_0x44.row, 1, "Key 1 lower Y - KEY1LY7 KEY1LY6 KEY1LY5 KEY1LY4 KEY1LY3 KEY1LY2 KEY1LY1 KEY1LY0 -"},
    {'X', 0x45, "RN_0x45", 8, byte_value(0b1001'0111), bf_0x45.row, 1, "Key 2 lower U - KEY2LU7 KEY2LU6 KEY2LU5 KEY2LU4 KEY2LU3 KEY2LU2 KEY2LU1 KEY2LU0 -"},
    {'X', 0x46, "RN_0x46", 8, byte_value(0b0100'1100), bf_0x46.row, 1, "Key 2 lower V - KEY2LV7 KEY2LV6 KEY2LV5 KEY2LV4 KEY2LV3 KEY2LV2 KEY2LV1 KEY2LV0 -"},
    {'X', 0x47, "RN_0x47", 8, byte_value(0b0001'1000), bf_0x47.row, 1, "Key 2 lower Y - KEY2LY7 KEY2LY6 KEY2LY5 KEY2LY4 KEY2LY3 KEY2LY2 KEY2LY1 KEY2LY0 -"},
    {'X', 0x48, "RN_0x48", 8, byte_value(0b1001'1011), bf_0x48.row, 1, "Key 1 upper U - KEY1UU7 KEY1UU6 KEY1UU5 KEY1UU4 KEY1UU3 KEY1UU2 KEY1UU1 KEY1UU0 -"},
    {'X', 0x49, "RN_0x49", 8, byte_value(0b1001'0011), bf_0x49.row, 1, "Key 1 upper V - KEY1UV7 KEY1UV6 KEY1UV5 KEY1UV4 KEY1UV3 KEY1UV2 KEY1UV1 KEY1UV0 -"},
    {'X', 0x4a, "RN_0x4a", 8, byte_value(0b1001'1111), bf_0x4A.row, 1, "Key 1 upper Y - KEY1UY7 KEY1UY6 KEY1UY5 KEY1UY4 KEY1UY3 KEY1UY2 KEY1UY1 KEY1UY0 -"},
    {'X', 0x4b, "RN_0x4b", 8, byte_value(0b1111'1111), bf_0x4B.row, 1, "Key 2 upper U - KEY2UU7 KEY2UU6 KEY2UU5 KEY2UU4 KEY2UU3 KEY2UU2 KEY2UU1 KEY2UU0 -"},
    {'X', 0x4c, "RN_0x4c", 8, byte_value(0b0111'1100), bf_0x4C.row, 1, "Key 2 upper V - KEY2UV7 KEY2UV6 KEY2UV5 KEY2UV4 KEY2UV3 KEY2UV2 KEY2UV1 KEY2UV0 -"},
    {'X', 0x4d, "RN_0x4d", 8, byte_value(0b0011'0100), bf_0x4D.row, 1, "Key 2 upper Y - KEY2UY7 KEY2UY6 KEY2UY5 KEY2UY4 KEY2UY3 KEY2UY2 KEY2UY1 KEY2UY0 -"},
    {'X', 0x4e, "RN_0x4e", 8, byte_value(0b0011'1111), bf_0x4E.row, 1, "Fade factor key color 1 - 0 0 FADE15 FADE14 FADE13 FADE12 FADE11 FADE10 -"},
    {'X', 0x4f, "RN_0x4f", 8, byte_value(0b0001'0111), bf_0x4F.row, 1, "Fade factor key color 2 - CFADEM CFADEV FADE25 FADE24 FADE23 FADE22 FADE21 FADE20 -"},
    {'X', 0x50, "RN_0x50", 8, byte_value(0b0000'0000), bf_0x50.row, 1, "Fade factor other pixels - 0 0 FADE35 FADE34 FADE33 FADE32 FADE31 FADE30 -"},
    {'X', 0x51, "RN_0x51", 8, byte_value(0b1000'0011), bf_0x51.row, 1, "Look-up table key color 2 U - LUTU7 LUTU6 LUTU5 LUTU4 LUTU3 LUTU2 LUTU1 LUTU0 -"},
    {'X', 0x52, "RN_0x52", 8, byte_value(0b1000'0011), bf_0x52.row, 1, "Look-up table key color 2 V - LUTV7 LUTV6 LUTV5 LUTV4 LUTV3 LUTV2 LUTV1 LUTV0 -"},
    {'X', 0x53, "RN_0x53", 8, byte_value(0b1000'0000), bf_0x53.row, 1, "Look-up table key color 2 Y - LUTY7 LUTY6 LUTY5 LUTY4 LUTY3 LUTY2 LUTY1 LUTY0 -"},
    {'X', 0x54, "RN_0x54", 8, byte_value(0b1000'1100), bf_0x54.row, 1, "VPS enable, input control 2 - VPSEN 0 ENCIN RGBIN DELIN VPSEL EDGE2 EDGE1 -"},
    {'X', 0x55, "RN_0x55", 8, byte_value(0b0000'1111), bf_0x55.row, 1, "VPS byte 5 - VPS57 VPS56 VPS55 VPS54 VPS53 VPS52 VPS51 VPS50 -"},
    {'X', 0x56, "RN_0x56", 8, byte_value(0b1100'0011), bf_0x56.row, 1, "VPS byte 11 - VPS117 VPS116 VPS115 VPS114 VPS113 VPS112 VPS111 VPS110 -"},
    {'X', 0x57, "RN_0x57", 8, byte_value(0b0000'0110), bf_0x57.row, 1, "VPS byte 12 - VPS127 VPS126 VPS125 VPS124 VPS123 VPS122 VPS121 VPS120 -"},
    {'X', 0x58, "RN_0x58", 8, byte_value(0b0000'0010), bf_0x58.row, 1, "VPS byte 13 - VPS137 VPS136 VPS135 VPS134 VPS133 VPS132 VPS131 VPS130 -"},
    {'X', 0x59, "RN_0x59", 8, byte_value(0b1000'0000), bf_0x59.row, 1, "VPS byte 14 - VPS147 VPS146 VPS145 VPS144 VPS143 VPS142 VPS141 VPS140 -"},
    {'X', 0x5a, "RN_0x5a", 8, byte_value(0b0011'0100), bf_0x5A.row, 1, "Chrominance phase - CHPS7 CHPS6 CHPS5 CHPS4 CHPS3 CHPS2 CHPS1 CHPS0 -"},
    {'X', 0x5b, "RN_0x5b", 8, byte_value(0b0111'1101), bf_0x5B.row, 1, "Gain U - GAINU7 GAINU6 GAINU5 GAINU4 GAINU3 GAINU2 GAINU1 GAINU0 -"},
    {'X', 0x5c, "RN_0x5c", 8, byte_value(0b1010'1111), bf_0x5C.row, 1, "Gain V - GAINV7 GAINV6 GAINV5 GAINV4 GAINV3 GAINV2 GAINV1 GAINV0 -"},
    {'X', 0x5d, "RN_0x5d", 8, byte_value(0b0010'1101), bf_0x5D.row, 1, "Gain U MSB, black level - GAINU8 DECOE BLCKL5 BLCKL4 BLCKL3 BLCKL2 BLCKL1 BLCKL0 -"},
    {'X', 0x5e, "RN_0x5e", 8, byte_value(0b0011'1111), bf_0x5E.row, 1, "Gain V MSB, blank level - GAINV8 DECPH BLNNL5 BLNNL4 BLNNL3 BLNNL2 BLNNL1 BLNNL0 -"},
    {'X', 0x5f, "RN_0x5f", 8, byte_value(0b0011'1111), bf_0x5F.row, 1, "CCR, blanking level VBI - CCRS1 CCRS0 BLNVB5 BLNVB4 BLNVB3 BLNVB2 BLNVB1 BLNVB0 -"},
    {'X', 0x60, "RN_0x60", 8, byte_value(0b0111'1011), bf_0x60.row, 1, "NUll"},
    {'X', 0x61, "RN_0x61", 8, byte_value(0b0000'0010), bf_0x61.row, 1, "Standard Control            - DOWNB DOWNA INPI  YGS   SECAM SCBW  PAL   FISE -"},
    {'X', 0x62, "RN_0x62", 8, byte_value(0b0010'1111), bf_0x62.row, 1, "RTC enable, burst amplitude - RTCE BSTA6 BSTA5 BSTA4 BSTA3 BSTA2 BSTA1 BSTA0 -"},
    {'X', 0x63, "RN_0x63", 8, byte_value(0b1100'1011), bf_0x63.row, 1, "Subcarrier 0  - FSC07 FSC06 FSC05 FSC04 FSC03 FSC02 FSC01 FSC00 -"},
    {'X', 0x64, "RN_0x64", 8, byte_value(0b1000'1010), bf_0x64.row, 1, "Subcarrier 1 - FSC15 FSC14 FSC13 FSC12 FSC11 FSC10 FSC09 FSC08 -"},
    {'X', 0x65, "RN_0x65", 8, byte_value(0b0000'1001), bf_0x65.row, 1, "Subcarrier 2 - FSC23 FSC22 FSC21 FSC20 FSC19 FSC18 FSC17 FSC16 -"},
    {'X', 0x66, "RN_0x66", 8, byte_value(0b0010'1010), bf_0x66.row, 1, "Subcarrier 3 - FSC31 FSC30 FSC29 FSC28 FSC27 FSC26 FSC25 FSC24 -"},
    {'X', 0x67, "RN_0x67", 8, byte_value(0b0111'0111), bf_0x67.row, 1, "Line 21 odd 0 - L21O07 L21O06 L21O05 L21O04 L21O03 L21O02 L21O01 L21O00 -"},
    {'X', 0x68, "RN_0x68", 8, byte_value(0b0100'0001), bf_0x68.row, 1, "Line 21 odd 1 - L21O17 L21O16 L21O15 L21O14 L21O13 L21O12 L21O11 L21O10 -"},
    {'X', 0x69, "RN_0x69", 8, byte_value(0b1000'1000), bf_0x69.row, 1, "Line 21 even 0 - L21E07 L21E06 L21E05 L21E04 L21E03 L21E02 L21E01 L21E00 -"},
    {'X', 0x6a, "RN_0x6a", 8, byte_value(0b0100'0001), bf_0x6A.row, 1, "Line 21 even 1 - L21E17 L21E16 L21E15 L21E14 L21E13 L21E12 L21E11 L21E10 -"},
    {'X', 0x6b, "RN_0x6b", 8, byte_value(0b0000'0000), bf_0x6B.row, 1, "RCV port control - SRCV11 SRCV10 TRCV2 ORCV1 PRCV1 CBLF ORCV2 PRCV2 -"},
    {'X', 0x6c, "RN_0x6c", 8, byte_value(0b0000'0010), bf_0x6C.row, 1, "Trigger control - HTRIG7 HTRIG6 HTRIG5 HTRIG4 HTRIG3 HTRIG2 HTRIG1 HTRIG0 -"},
    {'X', 0x6d, "RN_0x6d", 8, byte_value(0b0010'0000), bf_0x6D.row, 1, "Trigger control - HTRIG10 HTRIG9 HTRIG8 VTRIG4 VTRIG3 VTRIG2 VTRIG1 VTRIG0 -"},
    {'X', 0x6e, "RN_0x6e", 8, byte_value(0b1010'0000), bf_0x6E.row, 1, "Multi control - SBLBN BLCKON PHRES1 PHRES0 LDEL1 LDEL0 FLC1 FLC0 -"},
    {'X', 0x6f, "RN_0x6f", 8, byte_value(0b1011'0100), bf_0x6F.row, 1, "Closed caption, TTX enable - CCEN1 CCEN0 TTXEN SCCLN4 SCCLN3 SCCLN2 SCCLN1 SCCLN0 -"},
    {'X', 0x70, "RN_0x70", 8, byte_value(0b0100'0001), bf_0x70.row, 1, "RCV2 output start - RCV2S7 RCV2S6 RCV2S5 RCV2S4 RCV2S3 RCV2S2 RCV2S1 RCV2S0 -"},
    {'X', 0x71, "RN_0x71", 8, byte_value(0b1100'0011), bf_0x71.row, 1, "RCV2 output end - RCV2E7 RCV2E6 RCV2E5 RCV2E4 RCV2E3 RCV2E2 RCV2E1 RCV2E0 -"},
    {'X', 0x72, "RN_0x72", 8, byte_value(0b0000'0000), bf_0x72.row, 1, "MSBs RCV2 output - 0 RCV2E10 RCV2E9 RCV2E8 0 RCV2S10 RCV2S9 RCV2S8 -"},
    {'X', 0x73, "RN_0x73", 8, byte_value(0b0011'1110), bf_0x73.row, 1, "TTX request H start - TTXHS7 TTXHS6 TTXHS5 TTXHS4 TTXHS3 TTXHS2 TTXHS1 TTXHS0 -"},
    {'X', 0x74, "RN_0x74", 8, byte_value(0b1011'1000), bf_0x74.row, 1, "TTX request H delay - TTXHL3 TTXHL2 TTXHL1 TTXHL0 TTXHD3 TTXHD2 TTXHD1 TTXHD0 -"},
    {'X', 0x75, "RN_0x75", 8, byte_value(0b0001'1110), bf_0x75.row, 1, "CSYNC advance, V shift - CSYNCA4 CSYNCA3 CSYNCA2 CSYNCA1 CSYNCA0 VS_S2 VS_S1 VS_S0 -"},
    {'X', 0x76, "RN_0x76", 8, byte_value(0b0001'0101), bf_0x76.row, 1, "TTX odd start - TTXOVS7 TTXOVS6 TTXOVS5 TTXOVS4 TTXOVS3 TTXOVS2 TTXOVS1 TTXOVS0 -"},
    {'X', 0x77, "RN_0x77", 8, byte_value(0b0001'0110), bf_0x77.row, 1, "TTX odd end - TTXOVE7 TTXOVE6 TTXOVE5 TTXOVE4 TTXOVE3 TTXOVE2 TTXOVE1 TTXOVE0 -"},
    {'X', 0x78, "RN_0x78", 8, byte_value(0b0001'0101), bf_0x78.row, 1, "TTX even start - TTXEVS7 TTXEVS6 TTXEVS5 TTXEVS4 TTXEVS3 TTXEVS2 TTXEVS1 TTXEVS0 -"},
    {'X', 0x79, "RN_0x79", 8, byte_value(0b0001'0110), bf_0x79.row, 1, "TTX even end - TTXEVE7 TTXEVE6 TTXEVE5 TTXEVE4 TTXEVE3 TTXEVE2 TTXEVE1 TTXEVE0 -"},
    {'X', 0x7a, "RN_0x7a", 8, byte_value(0b0010'1011), bf_0x7A.row, 1, "First active line       - FAL7  FAL6 FAL5 FAL4 FAL3    FAL2    FAL1    FAL0 -"},
    {'X', 0x7b, "RN_0x7b", 8, byte_value(0b1101'1001), bf_0x7B.row, 1, "Last active line - LAL7 LAL6 LAL5 LAL4 LAL3 LAL2 LAL1 LAL0 -"},
    {'X', 0x7c, "RN_0x7c", 8, byte_value(0b1000'0000), bf_0x7C.row, 1, "TTX mode, MSB vertical - TTX60 LAL8 TTXO FAL8 TTXEVE8 TTXOVE8 TTXEVS8 TTXOVS8 -"},
    {'X', 0x7d, "RN_0x7d", 8, byte_value(0b0000'0000), bf_0x7D.row, 1, "null"},
    {'X', 0x7e, "RN_0x7e", 8, byte_value(0b0000'0000), bf_0x7E.row, 1, "Disable TTX line - LINE12 LINE11 LINE10 LINE9 LINE8 LINE7 LINE6 LINE5 -"},
    {'X', 0x7f, "RN_0x7f", 8, byte_value(0b0000'0000), bf_0x7F.row, 1, "Disable TTX line - LINE20 LINE19 LINE18 LINE17 LINE16 LINE15 LINE14 LINE13 -"},
    end_of_table,
};
// clang-format on
static_assert(std::size(regs_saa7129) == 73 + 1, "73 registers and the end of the table");
}
