// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaro {

/// What a person can ask of the child window with the focus. Each window knows which of these it can do at the moment.
enum class ViewCommand {
    // Clipboard and selection
    cut,
    copy,
    paste, ///< at the play position
    remove,
    duplicate, ///< right behind the selection
    selectAll,
    selectNone,
    invertSelection,
    properties, ///< the small editor of what is selected
    openEditor, ///< of the notes of what is selected or current; a value that can be typed opens for it
    editCell,   ///< opens the current value for typing
    // Moving what is selected: by a step of the grid, a tick, a row, twelve rows
    nudgeLeft,
    nudgeRight,
    tickLeft,
    tickRight,
    nudgeUp,
    nudgeDown,
    octaveUp,
    octaveDown,
    longer,
    shorter,
    // Notes
    joinNotes,
    splitNotes, ///< at the play position
    // Tracks
    armTrack,  ///< the current one takes recordings, or no longer
    muteTrack, ///< or no longer
    soloTrack, ///< or no longer
    // Blocks
    newBlock,
    duplicateLinked,
    divideBlocks, ///< at the play position
    linkBlocks,   ///< joins what is selected of one track
    realiseBlock,
    showSource,
    selectSiblings, ///< every block that shares its events
    mergeBlocks,
    // Events
    insertEvent,
    // Looks
    zoomIn,
    zoomOut,
    zoomInRows,
    zoomOutRows,
    zoomToSong,
    zoomToSelection,
    shadows,      ///< of other tracks; a switch
    controlStrip, ///< below the notes; a switch
    audition,     ///< notes sound as they are touched; a switch
    // The grid: one for all windows
    gridFree, ///< no grid; a switch
    gridFiner,
    gridCoarser,
    // The tool that a press of the mouse uses: one for all windows
    toolSelect,
    toolPencil,
    toolEraser,
    toolDivide,
    toolJoin,
    toolVelocity,
    toolLine,
    toolCurve,
};

inline constexpr int viewCommands = static_cast<int>(ViewCommand::toolCurve) + 1;

/// The tools, in the order of their commands. A window without a use for one takes it as `select`.
enum class EditTool { select, pencil, eraser, divide, join, velocity, line, curve };

} // namespace tessaro
