/* SPDX-License-Identifier: MIT */
#include "dbus/CHaldenDebug.h"

#include "CHaldendDebugAdaptor.h"
#include "dbus/DBusRegistration.h"
#include "fpga/overlay_switches.h"
#include "platform/CMultimediaPlatform.h"
#include "regdb/chip_regs.h"
#include "regdb/config_file.h"
#include "regdb/debug_print.h"
#include "regdb/registers.h"

namespace
{

/// The chips in the order in which they are saved, and their names for clients.
const struct {
    const char* pszWord;
    const chip_regs* psChip;
    const char* (*pfnFile)();
} CHIPS[] = {
    {"lime",    &crp_lime,    CMultimediaPlatform::getLimeConfigFile   },
    {"fpga",    &crp_fpga,    CMultimediaPlatform::getFPGAConfigFile   },
    {"saa7113", &crp_saa7113, CMultimediaPlatform::getSAA7113ConfigFile},
    {"saa7129", &crp_saa7129, CMultimediaPlatform::getSAA7129ConfigFile},
};

} // namespace

CHaldenDebug::CHaldenDebug() : m_pcAdaptor(nullptr) {}

bool CHaldenDebug::setupDBusConnection()
{
    return registerDBusObject(*this, m_pcAdaptor, QStringLiteral("/debug"), {"CHaldenDebug", "start"});
}

void CHaldenDebug::fpga_disable_frame_generator()
{
    frame_generator_off();
}

void CHaldenDebug::fpga_disable_video_restore()
{
    video_restore_off();
}

void CHaldenDebug::fpga_enable_frame_generator()
{
    frame_generator_on();
}

void CHaldenDebug::fpga_enable_video_restore()
{
    video_restore_on();
}

void CHaldenDebug::fpga_enter_playback_mode()
{
    fpga_play_mode();
}

void CHaldenDebug::fpga_enter_recording_mode()
{
    fpga_rec_mode();
}

void CHaldenDebug::print_hardware_config(const QString& hardware_name)
{
    for (const auto& rsChip : CHIPS) {
        if (hardware_name != QLatin1String(rsChip.pszWord))
            continue;
        read_all_regs(rsChip.psChip);
        DEBUG_print_all_regs(rsChip.psChip, 1);
    }
}

void CHaldenDebug::reload_hardware_config()
{
    // Each step that fails is in the log; the method has no result.
    (void)CMultimediaPlatform::reinitialize();
}

void CHaldenDebug::save_hardware_config()
{
    for (const auto& rsChip : CHIPS)
        write_config_to_file(rsChip.psChip, rsChip.pfnFile(), 1);
}
