// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/setup_commands.h"

#include "core/doc/tr9app.h"
#include "core/doc/tr9doc.h"
#include "realtime/transport/cnp_window.h"
#include "views/frame/window_user.h"
#include "views/setup/detection_dialog.h"
#include "views/setup/metronome_dialog.h"
#include "views/setup/setup_sheet.h"
#include "views/setup/sys_dev_page.h"
#include "views/setup/sys_rec_dialog.h"
#include "views/text/ui_text.h"

namespace tessaro {
namespace {

QStringList names(const CTR9App& app, std::size_t count, std::string (CTR9App::*name)(std::uint8_t) const)
{
    QStringList list;
    for (std::size_t i = 0; i < count; ++i) list << songText((app.*name)(static_cast<std::uint8_t>(i)));
    return list;
}

SetupDrivers driversOf(const CTR9App& app)
{
    return {.midiOut = names(app, app.GetDrvNum(), &CTR9App::GetDrvName),
            .midiIn = names(app, app.GetMidiInDrvNum(), &CTR9App::GetMidiInDrvName),
            .waveOut = names(app, app.GetWavOutDrvNum(), &CTR9App::GetWavOutDrvName),
            .waveIn = names(app, app.GetWavInDrvNum(), &CTR9App::GetWavInDrvName)};
}

} // namespace

void SetupCommands::systemSetup()
{
    if (isBusy()) return;
    m_parts.panel.Stop();
    CTR9App& app = m_parts.app;
    app.PrepareSystemSetup();
    const SetupDrivers drivers = driversOf(app);
    if (CSysDevPropPage::refuses(drivers)) m_parts.user.message(TextId::tooManyDrivers, MessageKind::error);
    const ProfileStore choices(app.GetIniFile());
    SetupSheet sheet(app.GetSettings(), drivers, choices, m_parts.text, &m_window);
    if (sheet.devicePage()) sheet.devicePage()->setDetection([this, &sheet] { return detectModules(sheet); });
    m_systemSetupShown = true;
    const bool accepted = sheet.exec() == QDialog::Accepted;
    m_systemSetupShown = false;
    if (accepted) app.SetSettings(sheet.settings());
}

std::optional<std::vector<int>> SetupCommands::detectModules(QWidget& dialog)
{
    ModuleDetection detection(m_parts.app, m_parts.smc);
    DetectionDialog progress(detection, m_parts.text, &dialog);
    if (progress.exec() != QDialog::Accepted) return std::nullopt;
    return detection.found();
}

void SetupCommands::recordSettings()
{
    if (isBusy()) return;
    CCnpWindow& panel = m_parts.panel;
    panel.Stop();
    PushedRange loop;
    panel.GetLoop(loop.start, loop.end);
    CSysRecDlg dialog(m_parts.app.GetRecordSettings(), loop, PositionScale(&m_parts.document.GetEditor()), m_parts.text,
                      &m_window);
    if (dialog.exec() == QDialog::Accepted) take(dialog.settings(), dialog.loop());
}

void SetupCommands::take(const RecordPlaySettings& settings, const PushedRange& loop)
{
    CCnpWindow& panel = m_parts.panel;
    const bool otherMode = settings.recMode != m_parts.app.GetRecMode();
    m_parts.app.SetRecordSettings(settings);
    if (otherMode) panel.RecStop();
    panel.SetMIDIChase(settings.midiChase != 0);
    panel.SetViewChase(settings.viewChase != 0);
    panel.SetLoop(loop.start, loop.end);
}

void SetupCommands::metronomeSettings()
{
    if (isBusy()) return;
    CTR9App& app = m_parts.app;
    const auto send = [&app](int port, std::uint8_t status, std::uint8_t key, std::uint8_t velocity) {
        app.SendShortMsg(static_cast<short>(port), status, key, velocity);
    };
    MetronomeDialog dialog(app.GetMetronome(), portNames(), send, m_parts.text, &m_window);
    if (dialog.exec() == QDialog::Accepted) app.SetMetronome(dialog.settings());
}

} // namespace tessaro
