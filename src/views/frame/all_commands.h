// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaro {

class CommandList;
class EverydayEdits;
class FrameActions;
class ViewActions;

/// Adds every command of the program, in the order of the menus.
void listCommands(CommandList& list, FrameActions& frame, ViewActions& view, EverydayEdits& edits);

} // namespace tessaro
