// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/program.h"

#include "core/doc/recovery.h"
#include "views/frame/user_settings.h"

namespace tessaro {
namespace {

constexpr int endInterval = 20; ///< milliseconds until the end of a note is asked for again

} // namespace

Program::Program(Clock& clock, MidiSystem& midi, ProfileStore& store, Strings& strings, const ProgramFolders& folders,
                 std::function<QString()> deviceSentence, TypedKeys* typedKeys)
    : m_text(strings)
    , m_toolkitTexts(m_text)
    , m_icons(folders.icons)
    , m_wsIni(folders.appDirectory + "ws.ini")
    , m_user(m_text, m_icons)
    , m_queue([this](const Message& message) {
        if (m_windows.frame()) m_windows.frame()->handle(message);
    })
    , m_queueNotifier(m_queue.fd(), QSocketNotifier::Read)
    , m_loom(clock, midi)
    , m_smc({m_loom, clock, store, m_wsIni, m_user, strings})
    , m_transport(m_smc)
    , m_panel({m_smc, clock, store, m_user, strings, &m_disk})
    , m_messages(m_smc, m_panel, m_media)
    , m_devices(m_smc, midi)
    , m_files(strings, folders.appDirectory)
    , m_recoveryFolder(folders.recovery)
    , m_autosave(m_recoveryFolder.empty() ? nullptr
                                          : std::make_unique<Autosave>(clock, m_files, m_disk, m_recoveryFolder))
    , m_document({m_files, m_user, m_windows, m_transport, m_waveLengths, m_waveOutput, m_score, m_windows, strings,
                  &m_disk, m_autosave.get()})
    , m_clipboard(m_document.GetEditor(), strings)
    , m_audition(m_smc, m_document.GetEditor())
    , m_app({m_document, m_user, m_devices, m_windows, store, folders.appDirectory, folders.lockFolder})
{
    QObject::connect(&m_queueNotifier, &QSocketNotifier::activated, [this] { m_queue.drain(); });
    QObject::connect(&m_endTimer, &QTimer::timeout, [this] { m_audition.retry(); });
    m_endTimer.setSingleShot(true);
    m_audition.onRefused = [this] { m_endTimer.start(endInterval); };
    m_theme.setAppearance(UserSettings(store).appearance());
    m_smc.setMainWindow(&m_queue);
    m_panel.setMainFrame(&m_queue);
    const ProfileStore location(folders.appDirectory + "Location.ini");
    m_panel.setThinTime(location.getInt("Location Thin", "Thin Time Cnp", 1));
    m_transport.setPanel(&m_panel);
    m_panel.recorder().setKeeper(&m_document);
    m_windows.setMaker([this, &store, sentence = std::move(deviceSentence), typedKeys] {
        return std::make_unique<CMainFrame>(FrameParts{m_app, m_document, m_panel, m_smc, m_messages, store, m_user,
                                                       m_text, m_theme, m_icons, sentence, m_devices, m_clipboard,
                                                       m_audition, typedKeys});
    });
}

bool Program::start(const CommandLine& commandLine)
{
    if (!m_app.InitInstance(commandLine)) return false;
    if (!m_recoveryFolder.empty()) frame().offerRecovery(std::make_unique<RecoveryList>(m_recoveryFolder));
    return true;
}

Program::~Program()
{
    m_windows.close();
    m_audition.stop();
    m_app.ExitInstance();
    m_smc.setMainWindow(nullptr);
}

} // namespace tessaro
