// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/list/evnt_kind.h"

#include <QString>

#include <optional>
#include <variant>

namespace tessaro {

class CEditor;

enum class ListColumn { place, kind, channel, value1, value2, gate, data };
inline constexpr int listColumns = 7;

/// What a cell is to become: a value, or more or less of the value that it has.
struct CellChange {
    CellForm form = CellForm::none;
    bool isRelative = false;
    /// By the form: a number, microseconds a quarter note (beats a minute where relative), both bytes of a pair, the
    /// bytes of a signature or of a payload.
    double number = 0;
    std::vector<std::uint8_t> bytes;
};

/// What a cell refuses, in words.
struct CellFault {
    QString sentence;
};

/// The cells of the event list as texts, and back. Places are measure, beat and tick of the song. Borrows both.
class EvntCells {
public:
    EvntCells(const CEditor& editor, const UiText& text) : m_editor(editor), m_text(text) {}

    [[nodiscard]] QString placeText(std::uint32_t time) const;
    /// Minutes and seconds from the song's start.
    [[nodiscard]] QString clockText(std::uint32_t time) const;
    /// `time` is the event's place in the song.
    [[nodiscard]] QString shown(const CEvnt& event, std::uint32_t time, ListColumn column) const;
    /// What stands in the line when the cell is opened.
    [[nodiscard]] QString typed(const CEvnt& event, std::uint32_t time, ListColumn column) const;
    [[nodiscard]] bool isEditable(const CEvnt& event, ListColumn column) const;

    /// A place: measure:beat:tick from 1:1:0 on, what is left out is the first. Nothing for what is none.
    [[nodiscard]] std::optional<std::uint32_t> parsePlace(const QString& text) const;
    /// How far a place moves an event from its time: `+` and `-` before a number of ticks move by these.
    [[nodiscard]] std::optional<std::int64_t> parseMove(const QString& text, std::uint32_t time) const;
    /// What was typed into a cell but that of the place.
    using Parsed = std::variant<CellChange, CellFault>;
    [[nodiscard]] Parsed parse(const QString& text, const CEvnt& event, ListColumn column) const;

    [[nodiscard]] static CellForm formOf(EvntKind kind, ListColumn column) noexcept;

private:
    [[nodiscard]] QString value(const CEvnt& event, ListColumn column, CellForm form) const;
    [[nodiscard]] Parsed signature(const QString& line, const CEvnt& event) const;
    [[nodiscard]] Parsed number(const QString& line, CellForm form, ListColumn column) const;

    const CEditor& m_editor;
    const UiText& m_text;
};

/// Writes a change into a draft of an event that has this form in the column; what is out of range stops at the range.
/// False when nothing changes.
bool applyChange(const CellChange& change, ListColumn column, EvntDraft& draft);

} // namespace tessaro
