// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/frame_actions.h"

#include "views/frame/panel_dock.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/theme/theme.h"
#include "views/widgets/tool_button.h"

#include <QMenu>
#include <QMenuBar>
#include <QWidget>

namespace tessaro {

FrameActions::FrameActions(QWidget& window, const Icons& icons, const UiText& text)
    : panelPlace(&window)
    , appearance(&window)
    , language(&window)
    , m_text(text)
{
    struct Row {
        QAction& action;
        TextId name;
        const char* icon;
        QKeySequence key;
    };
    const Row rows[] = {
        {newSong, TextId::commandNew, "new", QKeySequence::New},
        {open, TextId::commandOpen, "open", QKeySequence::Open},
        {save, TextId::commandSave, "save", QKeySequence::Save},
        {saveAs, TextId::commandSaveAs, nullptr, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)},
        {undo, TextId::menuUndo, "undo", QKeySequence(Qt::CTRL | Qt::Key_Z)},
        {redo, TextId::menuRedo, "redo", QKeySequence(Qt::CTRL | Qt::Key_Y)},
        {trackUp, TextId::commandTrackUp, nullptr, QKeySequence(Qt::ALT | Qt::Key_Up)},
        {trackDown, TextId::commandTrackDown, nullptr, QKeySequence(Qt::ALT | Qt::Key_Down)},
        {quit, TextId::commandQuit, nullptr, QKeySequence(Qt::CTRL | Qt::Key_Q)},
        {play, TextId::commandPlay, "play", QKeySequence(Qt::Key_Space)},
        {stop, TextId::commandStop, "stop", QKeySequence(Qt::Key_Period)},
        {record, TextId::commandRecord, "record", QKeySequence(Qt::Key_R)},
        {top, TextId::commandTop, "top", QKeySequence(Qt::Key_Home)},
        {end, TextId::commandEnd, "end", QKeySequence(Qt::Key_End)},
        {back, TextId::commandBack, nullptr, QKeySequence(Qt::Key_Escape)},
        {goTo, TextId::commandGoTo, nullptr, QKeySequence(Qt::CTRL | Qt::Key_G)},
        {rewind, TextId::commandRewind, "rewind", QKeySequence(Qt::CTRL | Qt::Key_Left)},
        {forward, TextId::commandForward, "forward", QKeySequence(Qt::CTRL | Qt::Key_Right)},
        {fastForward, TextId::commandFastForward, "fastforward", QKeySequence(Qt::Key_F)},
        {loop, TextId::commandLoop, "loop", QKeySequence(Qt::Key_L)},
        {loopTrack, TextId::commandLoopTrack, nullptr, QKeySequence(Qt::SHIFT | Qt::Key_L)},
        {metronome, TextId::commandMetronome, "metronome", QKeySequence(Qt::Key_K)},
        {tempoUp, TextId::commandTempoUp, nullptr, QKeySequence(Qt::CTRL | Qt::Key_Up)},
        {tempoDown, TextId::commandTempoDown, nullptr, QKeySequence(Qt::CTRL | Qt::Key_Down)},
        {tempoReset, TextId::commandTempoReset, nullptr, QKeySequence(Qt::CTRL | Qt::Key_0)},
        {transposeUp, TextId::commandTransposeUp, nullptr, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Up)},
        {transposeDown, TextId::commandTransposeDown, nullptr, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Down)},
        {midiChase, TextId::commandMidiChase, "midichase", QKeySequence(Qt::Key_C)},
        {viewChase, TextId::commandViewChase, "viewchase", QKeySequence(Qt::Key_V)},
        {midiSync, TextId::commandMidiSync, nullptr, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Y)},
        {stepStrip, TextId::stepTitle, nullptr, QKeySequence(Qt::CTRL | Qt::Key_I)},
        {keyboard, TextId::commandKeyboard, "keyboard", QKeySequence(Qt::CTRL | Qt::Key_K)},
        {systemSetup, TextId::commandSystemSetup, nullptr, QKeySequence(Qt::CTRL | Qt::Key_Comma)},
        {recordSettings, TextId::commandRecordSettings, nullptr, QKeySequence(Qt::CTRL | Qt::Key_R)},
        {metronomeSettings, TextId::commandMetronomeSettings, nullptr, QKeySequence(Qt::SHIFT | Qt::Key_K)},
        {keys, TextId::commandKeys, nullptr, QKeySequence(Qt::Key_F1)},
        {about, TextId::commandAbout, nullptr, {}},
    };
    for (const Row& row : rows) {
        if (row.icon) row.action.setIcon(icons.icon(QString::fromLatin1(row.icon)));
        row.action.setShortcut(row.key);
        row.action.setShortcutContext(Qt::ApplicationShortcut);
        window.addAction(&row.action);
        m_named.emplace_back(&row.action, row.name);
    }
    redo.setShortcuts({redo.shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    record.setShortcuts({record.shortcut(), QKeySequence(Qt::Key_F9)}); // also while letters are notes
    const auto alsoWithShift = [](QAction& action, Qt::Key key) {       // by bars
        action.setShortcuts({action.shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | key)});
    };
    alsoWithShift(rewind, Qt::Key_Left);
    alsoWithShift(forward, Qt::Key_Right);
    fastForward.setRepeating(false);
    const auto switches = {&play,      &record,    &loop,     &metronome, static_cast<QAction*>(&fastForward),
                           &midiChase, &viewChase, &midiSync, &stepStrip, &keyboard};
    for (QAction* action : switches) action->setCheckable(true);

    addChoice(panelPlace, TextId::panelTop, static_cast<int>(PanelPlace::top));
    addChoice(panelPlace, TextId::panelBottom, static_cast<int>(PanelPlace::bottom));
    addChoice(panelPlace, TextId::panelFloating, static_cast<int>(PanelPlace::floating));
    addChoice(appearance, TextId::appearanceDesktop, static_cast<int>(Appearance::desktop));
    addChoice(appearance, TextId::appearanceLight, static_cast<int>(Appearance::light));
    addChoice(appearance, TextId::appearanceDark, static_cast<int>(Appearance::dark));
    addChoice(language, TextId::languageDesktop, -1);
    addChoice(language, TextId::languageJapanese, static_cast<int>(Language::japanese));
    addChoice(language, TextId::languageEnglish, static_cast<int>(Language::english));
}

void FrameActions::addChoice(QActionGroup& group, TextId text, int number)
{
    auto* action = new QAction(&group); // joins the group, which owns it
    action->setCheckable(true);
    action->setData(number);
    m_named.emplace_back(action, text);
}

void FrameActions::choose(const QActionGroup& group, int number)
{
    for (QAction* action : group.actions())
        if (action->data().toInt() == number) action->setChecked(true);
}

void FrameActions::fillMenuBar(QMenuBar& bar)
{
    const auto add = [&](auto& parent, TextId name) {
        QMenu* menu = parent.addMenu(QString());
        m_menus.emplace_back(menu, name);
        return menu;
    };
    QMenu* file = add(bar, TextId::menuFile);
    file->addActions({&newSong, &open});
    m_recentMenu = add(*file, TextId::menuRecent);
    file->addSeparator();
    file->addActions({&save, &saveAs});
    file->addSeparator();
    file->addAction(&quit);

    QMenu* edit = add(bar, TextId::menuEdit);
    edit->addActions({&undo, &redo});
    edit->addSeparator();
    edit->addActions({&trackUp, &trackDown});

    QMenu* transport = add(bar, TextId::menuTransport);
    transport->addActions({&play, &stop, &record});
    transport->addSeparator();
    transport->addActions({&top, &end, &back, &goTo, &rewind, &forward, &fastForward});
    transport->addSeparator();
    transport->addActions({&loop, &loopTrack, &metronome});
    QMenu* tempo = add(*transport, TextId::menuTempo);
    tempo->addActions({&tempoUp, &tempoDown, &tempoReset});
    tempo->addSeparator();
    tempo->addActions({&transposeUp, &transposeDown});
    transport->addSeparator();
    transport->addActions({&midiChase, &viewChase, &midiSync});

    QMenu* view = add(bar, TextId::menuView);
    view->addActions({&keyboard, &stepStrip});
    view->addSeparator();
    add(*view, TextId::menuPanel)->addActions(panelPlace.actions());
    add(*view, TextId::menuAppearance)->addActions(appearance.actions());
    add(*view, TextId::menuLanguage)->addActions(language.actions());

    add(bar, TextId::menuSettings)->addActions({&systemSetup, &recordSettings, &metronomeSettings});
    add(bar, TextId::menuHelp)->addActions({&keys, &about});
    retranslate();
}

void FrameActions::retranslate()
{
    for (const auto& [menu, name] : m_menus) menu->setTitle(m_text(name));
    for (const auto& [action, name] : m_named) {
        action->setText(m_text(name));
        action->setIconText(m_text.plain(name));
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
    for (QAction* action : {&newSong, &open, &save, &saveAs, &trackUp, &trackDown}) action->setEnabled(possible);
    m_recentMenu->setEnabled(possible);
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
        action.setText(title ? line(m_text(name), *title) + m_text(key) : m_text(nothing));
        action.setIconText(title ? QStringLiteral("%1 %2").arg(m_text.plain(name), *title) : m_text.plain(name));
    };
    show(undo, m_undoTitle, TextId::menuUndo, TextId::menuUndoKey, TextId::menuUndoNothing);
    show(redo, m_redoTitle, TextId::menuRedo, TextId::menuRedoKey, TextId::menuRedoNothing);
}

QString FrameActions::keyTable() const
{
    std::vector<QString> cells;
    const auto add = [&](const QString& name, const QString& key) {
        cells.push_back(QStringLiteral("<td>%1</td><td>&nbsp;<b>%2</b>&nbsp;&nbsp;&nbsp;&nbsp;</td>").arg(name, key));
    };
    for (const auto& [action, name] : m_named)
        if (!action->shortcut().isEmpty()) add(m_text.plain(name), shortcutNames(*action));
    add(m_text.plain(TextId::commandEditCell), QStringLiteral("F2"));
    add(m_text.plain(TextId::commandArm), QStringLiteral("A"));
    add(m_text.plain(TextId::commandMute), QStringLiteral("M"));
    add(m_text.plain(TextId::commandSolo), QStringLiteral("S"));

    // Two columns: one would be higher than a small screen.
    QString table = QStringLiteral("<table cellspacing=\"4\">");
    const std::size_t lines = (cells.size() + 1) / 2;
    for (std::size_t line = 0; line < lines; ++line) {
        const std::size_t other = line + lines;
        table += QStringLiteral("<tr style=\"white-space: nowrap\">%1%2</tr>")
                     .arg(cells[line], other < cells.size() ? cells[other] : QString());
    }
    return table + QStringLiteral("</table>");
}

} // namespace tessaro
