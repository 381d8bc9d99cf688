// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/frame_menus.h"

#include "views/editors/view_actions.h"
#include "views/edits/everyday_edits.h"
#include "views/frame/frame_actions.h"
#include "views/text/ui_text.h"

#include <QMenu>
#include <QMenuBar>

namespace tessaro {
namespace {

/// The commands from `first` to `last`, as they stand in the list of commands.
void addRange(QMenu& menu, ViewActions& actions, ViewCommand first, ViewCommand last)
{
    for (int i = static_cast<int>(first); i <= static_cast<int>(last); ++i)
        menu.addAction(&actions[static_cast<ViewCommand>(i)]);
}

} // namespace

FrameMenus::FrameMenus(QMenuBar& bar, const Commands& commands, const UiText& text) : m_commands(commands), m_text(text)
{
    FrameActions& frame = commands.frame;
    addFile(bar);
    addEdit(bar);
    addTracks(bar);
    addBlocks(bar);
    addNotes(bar);
    addTransport(bar);
    addView(bar);
    addSettings(bar);
    addWindow(bar);
    add(bar, TextId::menuHelp).addActions({&frame.keys, &frame.about});
    retranslate();
}

template <class Parent>
QMenu& FrameMenus::add(Parent& parent, TextId name)
{
    QMenu* menu = parent.addMenu(QString());
    m_menus.emplace_back(menu, name);
    return *menu;
}

void FrameMenus::addFile(QMenuBar& bar)
{
    FrameActions& actions = m_commands.frame;
    QMenu& menu = add(bar, TextId::menuFile);
    menu.addActions({&actions.newSong, &actions.open});
    m_recent = &add(menu, TextId::menuRecent);
    menu.addSeparator();
    menu.addActions({&actions.save, &actions.saveAs, &actions.exportMidi});
    menu.addSeparator();
    menu.addAction(&actions.quit);
}

void FrameMenus::addEdit(QMenuBar& bar)
{
    QMenu& menu = add(bar, TextId::menuEdit);
    menu.addActions({&m_commands.frame.undo, &m_commands.frame.redo, &m_commands.frame.history});
    menu.addSeparator();
    addRange(menu, m_commands.view, ViewCommand::cut, ViewCommand::duplicate);
    menu.addSeparator();
    addRange(menu, m_commands.view, ViewCommand::selectAll, ViewCommand::invertSelection);
    menu.addSeparator();
    addRange(menu, m_commands.view, ViewCommand::properties, ViewCommand::editCell);
    addRange(add(menu, TextId::menuTools), m_commands.view, ViewCommand::toolSelect, ViewCommand::toolCurve);
}

void FrameMenus::addTracks(QMenuBar& bar)
{
    QMenu& menu = add(bar, TextId::menuTracks);
    addRange(menu, m_commands.view, ViewCommand::armTrack, ViewCommand::soloTrack);
    menu.addSeparator();
    menu.addActions({&m_commands.frame.trackUp, &m_commands.frame.trackDown});
}

void FrameMenus::addBlocks(QMenuBar& bar)
{
    ViewActions& view = m_commands.view;
    QMenu& menu = add(bar, TextId::menuBlocks);
    menu.addActions({&view[ViewCommand::newBlock], &view[ViewCommand::duplicateLinked]});
    menu.addSeparator();
    menu.addActions(
        {&view[ViewCommand::divideBlocks], &view[ViewCommand::linkBlocks], &view[ViewCommand::mergeBlocks]});
    menu.addSeparator();
    addRange(menu, view, ViewCommand::realiseBlock, ViewCommand::selectSiblings);
}

void FrameMenus::addNotes(QMenuBar& bar)
{
    QMenu& menu = add(bar, TextId::menuNotes);
    addRange(menu, m_commands.view, ViewCommand::nudgeLeft, ViewCommand::octaveDown);
    menu.addSeparator();
    addRange(menu, m_commands.view, ViewCommand::longer, ViewCommand::splitNotes);
    menu.addAction(&m_commands.view[ViewCommand::insertEvent]);
    menu.addSeparator();
    for (int i = 0; i < everydayEdits; ++i) menu.addAction(&m_commands.edits[static_cast<EverydayEdit>(i)]);
}

void FrameMenus::addTransport(QMenuBar& bar)
{
    FrameActions& actions = m_commands.frame;
    QMenu& menu = add(bar, TextId::menuTransport);
    menu.addActions({&actions.play, &actions.stop, &actions.record});
    menu.addSeparator();
    menu.addActions({&actions.top, &actions.end, &actions.back, &actions.goTo, &actions.rewind, &actions.forward,
                     &actions.fastForward});
    menu.addSeparator();
    menu.addActions({&actions.loop, &actions.loopTrack, &actions.metronome});
    QMenu& tempo = add(menu, TextId::menuTempo);
    tempo.addActions({&actions.tempoUp, &actions.tempoDown, &actions.tempoReset});
    tempo.addSeparator();
    tempo.addActions({&actions.transposeUp, &actions.transposeDown});
    menu.addSeparator();
    menu.addActions({&actions.midiChase, &actions.viewChase, &actions.midiSync});
}

void FrameMenus::addView(QMenuBar& bar)
{
    FrameActions& frame = m_commands.frame;
    QMenu& menu = add(bar, TextId::menuView);
    menu.addActions({&frame.tracks, &frame.piano, &frame.drum, &frame.list, &frame.master});
    menu.addSeparator();
    addRange(add(menu, TextId::menuZoom), m_commands.view, ViewCommand::zoomIn, ViewCommand::zoomToSelection);
    addRange(add(menu, TextId::menuGrid), m_commands.view, ViewCommand::gridFree, ViewCommand::gridCoarser);
    addRange(menu, m_commands.view, ViewCommand::shadows, ViewCommand::audition);
    menu.addSeparator();
    menu.addActions({&frame.keyboard, &frame.stepStrip, &frame.editTools});
    menu.addSeparator();
    add(menu, TextId::menuPanel).addActions(frame.panelPlace.actions());
    add(menu, TextId::menuAppearance).addActions(frame.appearance.actions());
    add(menu, TextId::menuLanguage).addActions(frame.language.actions());
}

void FrameMenus::addSettings(QMenuBar& bar)
{
    FrameActions& actions = m_commands.frame;
    QMenu& menu = add(bar, TextId::menuSettings);
    menu.addActions({&actions.systemSetup, &actions.recordSettings, &actions.metronomeSettings});
    menu.addSeparator();
    menu.addAction(&actions.openLastWindows);
}

void FrameMenus::addWindow(QMenuBar& bar)
{
    FrameActions& actions = m_commands.frame;
    m_windows = &add(bar, TextId::menuWindow);
    m_windows->addActions({&actions.tile, &actions.tabs, &actions.floating, &actions.maximise});
    m_windows->addSeparator();
    m_windows->addActions({&actions.nextWindow, &actions.previousWindow, &actions.closeWindow});
    m_windows->addSeparator();
}

CommandList FrameMenus::commands() const
{
    CommandList list;
    m_commands.frame.listIn(list);
    for (int i = 0; i < viewCommands; ++i) {
        const auto command = static_cast<ViewCommand>(i);
        const ViewActions::Entry& entry = ViewActions::entry(command);
        list.add(entry.id, entry.text, m_commands.view[command]);
    }
    for (int i = 0; i < everydayEdits; ++i) {
        const auto edit = static_cast<EverydayEdit>(i);
        const EverydayEdits::Entry& entry = EverydayEdits::entry(edit);
        list.add(entry.id, entry.text, m_commands.edits[edit]);
    }
    std::vector<CommandGroup> groups;
    for (const auto& [menu, title] : m_menus) groups.push_back({title, menu->actions()});
    list.arrange(groups);
    return list;
}

void FrameMenus::retranslate()
{
    for (const auto& [menu, name] : m_menus) menu->setTitle(m_text(name));
}

} // namespace tessaro
