// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/frame_actions.h"

#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/theme/theme.h"

#include <QMenu>
#include <QMenuBar>
#include <QWidget>

namespace tessaro {

FrameActions::FrameActions(QWidget& window, const Icons& icons, const UiText& text)
    : appearance(&window)
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
        {top, TextId::commandTop, "top", QKeySequence(Qt::Key_Home)},
        {back, TextId::commandBack, nullptr, QKeySequence(Qt::Key_Escape)},
        {loop, TextId::commandLoop, "loop", QKeySequence(Qt::Key_L)},
        {metronome, TextId::commandMetronome, "metronome", QKeySequence(Qt::Key_K)},
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
    for (QAction* action : {&play, &loop, &metronome}) action->setCheckable(true);

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
    transport->addActions({&play, &stop, &top, &back});
    transport->addSeparator();
    transport->addActions({&loop, &metronome});

    QMenu* view = add(bar, TextId::menuView);
    add(*view, TextId::menuAppearance)->addActions(appearance.actions());
    add(*view, TextId::menuLanguage)->addActions(language.actions());

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

void FrameActions::showHistory()
{
    const auto show = [this](QAction& action, const std::optional<QString>& title, TextId name, TextId key,
                             TextId nothing) {
        const auto line = [](const QString& command, QString step) {
            return QStringLiteral("%1 %2").arg(command, step.replace(QLatin1Char('&'), QLatin1String("&&")));
        };
        action.setEnabled(title.has_value());
        action.setText(title ? line(m_text(name), *title) + m_text(key) : m_text(nothing));
        action.setIconText(title ? QStringLiteral("%1 %2").arg(m_text.plain(name), *title) : m_text.plain(name));
    };
    show(undo, m_undoTitle, TextId::menuUndo, TextId::menuUndoKey, TextId::menuUndoNothing);
    show(redo, m_redoTitle, TextId::menuRedo, TextId::menuRedoKey, TextId::menuRedoNothing);
}

QString FrameActions::keyTable() const
{
    QString table = QStringLiteral("<table cellspacing=\"6\">");
    const auto addRow = [&](const QString& name, const QString& key) {
        table += QStringLiteral("<tr><td>%1</td><td>&nbsp;&nbsp;<b>%2</b></td></tr>").arg(name, key);
    };
    for (const auto& [action, name] : m_named)
        if (!action->shortcut().isEmpty())
            addRow(m_text.plain(name), action->shortcut().toString(QKeySequence::NativeText));
    addRow(m_text.plain(TextId::commandEditCell), QStringLiteral("F2"));
    addRow(m_text.plain(TextId::commandMute), QStringLiteral("M"));
    addRow(m_text.plain(TextId::commandSolo), QStringLiteral("S"));
    return table + QStringLiteral("</table>");
}

} // namespace tessaro
