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

FrameMenus::FrameMenus(QMenuBar& bar, const Commands& commands, const UiText& text) : m_text(text)
{
    FrameActions& frame = commands.frame;
    addFile(bar, frame);
    addEdit(bar, commands);
    addBlocks(bar, commands);
    addNotes(bar, commands);
    addTransport(bar, frame);
    addView(bar, commands);
    add(bar, TextId::menuSettings).addActions({&frame.systemSetup, &frame.recordSettings, &frame.metronomeSettings});
    m_windows = &add(bar, TextId::menuWindow);
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

void FrameMenus::addFile(QMenuBar& bar, FrameActions& actions)
{
    QMenu& menu = add(bar, TextId::menuFile);
    menu.addActions({&actions.newSong, &actions.open});
    m_recent = &add(menu, TextId::menuRecent);
    menu.addSeparator();
    menu.addActions({&actions.save, &actions.saveAs, &actions.exportMidi});
    menu.addSeparator();
    menu.addAction(&actions.quit);
}

void FrameMenus::addEdit(QMenuBar& bar, const Commands& commands)
{
    QMenu& menu = add(bar, TextId::menuEdit);
    menu.addActions({&commands.frame.undo, &commands.frame.redo, &commands.frame.history});
    menu.addSeparator();
    addRange(menu, commands.view, ViewCommand::cut, ViewCommand::duplicate);
    menu.addSeparator();
    addRange(menu, commands.view, ViewCommand::selectAll, ViewCommand::invertSelection);
    menu.addSeparator();
    menu.addAction(&commands.view[ViewCommand::properties]);
    addRange(add(menu, TextId::menuTools), commands.view, ViewCommand::toolSelect, ViewCommand::toolCurve);
}

void FrameMenus::addBlocks(QMenuBar& bar, const Commands& commands)
{
    ViewActions& view = commands.view;
    QMenu& menu = add(bar, TextId::menuBlocks);
    menu.addActions({&view[ViewCommand::newBlock], &view[ViewCommand::duplicateLinked]});
    menu.addSeparator();
    menu.addActions(
        {&view[ViewCommand::divideBlocks], &view[ViewCommand::linkBlocks], &view[ViewCommand::mergeBlocks]});
    menu.addSeparator();
    addRange(menu, view, ViewCommand::realiseBlock, ViewCommand::selectSiblings);
    menu.addSeparator();
    menu.addActions({&commands.frame.trackUp, &commands.frame.trackDown});
}

void FrameMenus::addNotes(QMenuBar& bar, const Commands& commands)
{
    QMenu& menu = add(bar, TextId::menuNotes);
    addRange(menu, commands.view, ViewCommand::nudgeLeft, ViewCommand::octaveDown);
    menu.addSeparator();
    addRange(menu, commands.view, ViewCommand::longer, ViewCommand::splitNotes);
    menu.addAction(&commands.view[ViewCommand::insertEvent]);
    menu.addSeparator();
    for (int i = 0; i < everydayEdits; ++i) menu.addAction(&commands.edits[static_cast<EverydayEdit>(i)]);
}

void FrameMenus::addTransport(QMenuBar& bar, FrameActions& actions)
{
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

void FrameMenus::addView(QMenuBar& bar, const Commands& commands)
{
    FrameActions& frame = commands.frame;
    QMenu& menu = add(bar, TextId::menuView);
    menu.addActions({&frame.tracks, &frame.piano, &frame.drum, &frame.list, &frame.master});
    menu.addSeparator();
    addRange(add(menu, TextId::menuZoom), commands.view, ViewCommand::zoomIn, ViewCommand::zoomToSelection);
    addRange(menu, commands.view, ViewCommand::shadows, ViewCommand::controlStrip);
    menu.addSeparator();
    menu.addActions({&frame.keyboard, &frame.stepStrip, &frame.editTools});
    menu.addSeparator();
    add(menu, TextId::menuPanel).addActions(frame.panelPlace.actions());
    add(menu, TextId::menuAppearance).addActions(frame.appearance.actions());
    add(menu, TextId::menuLanguage).addActions(frame.language.actions());
}

void FrameMenus::retranslate()
{
    for (const auto& [menu, name] : m_menus) menu->setTitle(m_text(name));
}

} // namespace tessaro
