// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/frame_actions.h"

#include "views/commands/command_list.h"
#include "views/frame/panel_dock.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/theme/theme.h"

#include <QWidget>

namespace tessaro {
namespace {

/// The text of a menu's line with this key behind the tabulator.
QString withKey(const QString& text, const QKeySequence& key)
{
    const QString name = text.section(QLatin1Char('\t'), 0, 0);
    return key.isEmpty() ? name : name + QLatin1Char('\t') + key.toString(QKeySequence::NativeText);
}

} // namespace

FrameActions::FrameActions(QWidget& window, const Icons& icons, const UiText& text)
    : panelPlace(&window)
    , appearance(&window)
    , language(&window)
    , m_text(text)
{
    struct Row {
        QAction& action;
        const char* id;
        TextId name;
        const char* icon;
        QKeySequence key;
    };
    const Row rows[] = {
        {newSong, "new", TextId::commandNew, "new", QKeySequence::New},
        {open, "open", TextId::commandOpen, "open", QKeySequence::Open},
        {save, "save", TextId::commandSave, "save", QKeySequence::Save},
        {saveAs, "save-as", TextId::commandSaveAs, nullptr, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)},
        {exportMidi, "export-midi", TextId::commandExportMidi, nullptr, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_M)},
        {undo, "undo", TextId::menuUndo, "undo", QKeySequence(Qt::CTRL | Qt::Key_Z)},
        {redo, "redo", TextId::menuRedo, "redo", QKeySequence(Qt::CTRL | Qt::Key_Y)},
        {trackUp, "track-up", TextId::commandTrackUp, nullptr, QKeySequence(Qt::ALT | Qt::Key_Up)},
        {trackDown, "track-down", TextId::commandTrackDown, nullptr, QKeySequence(Qt::ALT | Qt::Key_Down)},
        {quit, "quit", TextId::commandQuit, nullptr, QKeySequence(Qt::CTRL | Qt::Key_Q)},
        {play, "play", TextId::commandPlay, "play", QKeySequence(Qt::Key_Space)},
        {stop, "stop", TextId::commandStop, "stop", QKeySequence(Qt::Key_Period)},
        {record, "record", TextId::commandRecord, "record", QKeySequence(Qt::Key_R)},
        {top, "top", TextId::commandTop, "top", QKeySequence(Qt::Key_Home)},
        {end, "end", TextId::commandEnd, "end", QKeySequence(Qt::Key_End)},
        {back, "back", TextId::commandBack, nullptr, QKeySequence(Qt::Key_Escape)},
        {goTo, "go-to", TextId::commandGoTo, nullptr, QKeySequence(Qt::CTRL | Qt::Key_G)},
        {rewind, "rewind", TextId::commandRewind, "rewind", QKeySequence(Qt::CTRL | Qt::Key_Left)},
        {forward, "forward", TextId::commandForward, "forward", QKeySequence(Qt::CTRL | Qt::Key_Right)},
        {fastForward, "fast-forward", TextId::commandFastForward, "fastforward", QKeySequence(Qt::Key_F)},
        {loop, "loop", TextId::commandLoop, "loop", QKeySequence(Qt::Key_L)},
        {loopTrack, "loop-track", TextId::commandLoopTrack, nullptr, QKeySequence(Qt::SHIFT | Qt::Key_L)},
        {metronome, "metronome", TextId::commandMetronome, "metronome", QKeySequence(Qt::Key_K)},
        {tempoUp, "tempo-up", TextId::commandTempoUp, nullptr, QKeySequence(Qt::CTRL | Qt::Key_Up)},
        {tempoDown, "tempo-down", TextId::commandTempoDown, nullptr, QKeySequence(Qt::CTRL | Qt::Key_Down)},
        {tempoReset, "tempo-reset", TextId::commandTempoReset, nullptr, QKeySequence(Qt::CTRL | Qt::Key_0)},
        {transposeUp, "transpose-up", TextId::commandTransposeUp, nullptr,
         QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Up)},
        {transposeDown, "transpose-down", TextId::commandTransposeDown, nullptr,
         QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Down)},
        {midiChase, "midi-chase", TextId::commandMidiChase, "midichase", QKeySequence(Qt::Key_C)},
        {viewChase, "view-chase", TextId::commandViewChase, "viewchase", QKeySequence(Qt::Key_V)},
        {midiSync, "midi-sync", TextId::commandMidiSync, nullptr, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Y)},
        {stepStrip, "step-input", TextId::stepTitle, nullptr, QKeySequence(Qt::CTRL | Qt::Key_I)},
        {keyboard, "keyboard", TextId::commandKeyboard, "keyboard", QKeySequence(Qt::CTRL | Qt::Key_K)},
        {systemSetup, "system-setup", TextId::commandSystemSetup, nullptr, QKeySequence(Qt::CTRL | Qt::Key_Comma)},
        {recordSettings, "record-settings", TextId::commandRecordSettings, nullptr, QKeySequence(Qt::CTRL | Qt::Key_R)},
        {metronomeSettings, "metronome-settings", TextId::commandMetronomeSettings, nullptr,
         QKeySequence(Qt::SHIFT | Qt::Key_K)},
        {openLastWindows, "open-last-windows", TextId::commandOpenLastWindows, nullptr,
         QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_W)},
        {tracks, "window-tracks", TextId::windowTrackFrame, "song", QKeySequence(Qt::Key_F4)},
        {piano, "window-piano", TextId::windowPiano, "piano", QKeySequence(Qt::Key_F5)},
        {drum, "window-drum", TextId::windowDrum, "drum", QKeySequence(Qt::Key_F6)},
        {list, "window-list", TextId::windowList, "list", QKeySequence(Qt::Key_F7)},
        {master, "window-master", TextId::windowMaster, "master", QKeySequence(Qt::Key_F8)},
        {history, "window-history", TextId::windowHistory, "history", QKeySequence(Qt::CTRL | Qt::Key_H)},
        {editTools, "edit-tools", TextId::commandEditTools, nullptr, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_B)},
        {tile, "tile", TextId::commandTile, nullptr, QKeySequence(Qt::CTRL | Qt::Key_T)},
        {tabs, "tabs", TextId::commandTabs, nullptr, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T)},
        {floating, "float", TextId::commandFloat, "float", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F)},
        {maximise, "maximise", TextId::commandMaximise, "maximise", QKeySequence(Qt::Key_F11)},
        {nextWindow, "next-window", TextId::commandNextWindow, nullptr, QKeySequence(Qt::CTRL | Qt::Key_Tab)},
        {previousWindow, "previous-window", TextId::commandPreviousWindow, nullptr,
         QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab)},
        {closeWindow, "close-window", TextId::commandCloseWindow, "close", QKeySequence(Qt::CTRL | Qt::Key_W)},
        {keys, "keys", TextId::commandKeys, nullptr, QKeySequence(Qt::Key_F1)},
        {about, "about", TextId::commandAbout, nullptr, QKeySequence(Qt::SHIFT | Qt::Key_F1)},
    };
    for (const Row& row : rows) {
        if (row.icon) row.action.setIcon(icons.icon(QString::fromLatin1(row.icon)));
        row.action.setShortcut(row.key);
        row.action.setShortcutContext(Qt::ApplicationShortcut);
        window.addAction(&row.action);
        m_named.push_back({&row.action, row.id, row.name});
    }
    redo.setShortcuts({redo.shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    record.setShortcuts({record.shortcut(), QKeySequence(Qt::Key_F9)}); // also while letters are notes
    const auto alsoWithShift = [](QAction& action, Qt::Key key) {       // by bars
        action.setShortcuts({action.shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | key)});
    };
    alsoWithShift(rewind, Qt::Key_Left);
    alsoWithShift(forward, Qt::Key_Right);
    fastForward.setRepeating(false);
    for (const QAction* action : {&undo, &redo}) // whose texts name their keys
        QObject::connect(action, &QAction::changed, &window, [this, action, shown = action->shortcut()]() mutable {
            if (std::exchange(shown, action->shortcut()) != action->shortcut()) showHistory();
        });
    const auto switches = {&play,      &record,    &loop,     &metronome,      static_cast<QAction*>(&fastForward),
                           &midiChase, &viewChase, &midiSync, &stepStrip,      &keyboard,
                           &history,   &editTools, &maximise, &openLastWindows};
    for (QAction* action : switches) action->setCheckable(true);

    addChoice(panelPlace, "panel-top", TextId::panelTop, static_cast<int>(PanelPlace::top));
    addChoice(panelPlace, "panel-bottom", TextId::panelBottom, static_cast<int>(PanelPlace::bottom));
    addChoice(panelPlace, "panel-floating", TextId::panelFloating, static_cast<int>(PanelPlace::floating));
    addChoice(appearance, "appearance-desktop", TextId::appearanceDesktop, static_cast<int>(Appearance::desktop));
    addChoice(appearance, "appearance-light", TextId::appearanceLight, static_cast<int>(Appearance::light));
    addChoice(appearance, "appearance-dark", TextId::appearanceDark, static_cast<int>(Appearance::dark));
    addChoice(language, "language-desktop", TextId::languageDesktop, -1);
    addChoice(language, "language-japanese", TextId::languageJapanese, static_cast<int>(Language::japanese));
    addChoice(language, "language-english", TextId::languageEnglish, static_cast<int>(Language::english));
}

void FrameActions::addChoice(QActionGroup& group, const char* id, TextId text, int number)
{
    auto* action = new QAction(&group); // joins the group, which owns it
    action->setCheckable(true);
    action->setData(number);
    action->setShortcutContext(Qt::ApplicationShortcut);
    static_cast<QWidget*>(group.parent())->addAction(action);
    m_named.push_back({action, id, text});
}

void FrameActions::choose(const QActionGroup& group, int number)
{
    for (QAction* action : group.actions())
        if (action->data().toInt() == number) action->setChecked(true);
}

void FrameActions::listIn(CommandList& commands)
{
    for (const Named& named : m_named) commands.add(named.id, named.name, *named.action);
}

void FrameActions::retranslate()
{
    for (const Named& named : m_named) {
        named.action->setText(m_text(named.name));
        named.action->setIconText(m_text.plain(named.name));
    }
    showHistory();
}

void FrameActions::setHistory(std::optional<QString> undoTitle, std::optional<QString> redoTitle)
{
    if (undoTitle == m_undoTitle && redoTitle == m_redoTitle) return;
    m_undoTitle = std::move(undoTitle);
    m_redoTitle = std::move(redoTitle);
    showHistory();
}

void FrameActions::setEditing(bool possible)
{
    if (possible == m_editing) return;
    m_editing = possible;
    for (QAction* action : {&newSong, &open, &save, &saveAs, &exportMidi, &trackUp, &trackDown})
        action->setEnabled(possible);
    showHistory();
}

void FrameActions::showHistory()
{
    const auto show = [this](QAction& action, const std::optional<QString>& title, TextId name, TextId key,
                             TextId nothing) {
        const auto line = [](const QString& command, QString step) {
            return QStringLiteral("%1 %2").arg(command, step.replace(QLatin1Char('&'), QLatin1String("&&")));
        };
        action.setEnabled(title && m_editing);
        const QString text = title ? line(m_text(name), *title) + m_text(key) : m_text(nothing);
        action.setText(withKey(text, action.shortcut()));
        action.setIconText(title ? QStringLiteral("%1 %2").arg(m_text.plain(name), *title) : m_text.plain(name));
    };
    show(undo, m_undoTitle, TextId::menuUndo, TextId::menuUndoKey, TextId::menuUndoNothing);
    show(redo, m_redoTitle, TextId::menuRedo, TextId::menuRedoKey, TextId::menuRedoNothing);
}

} // namespace tessaro
