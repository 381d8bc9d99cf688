// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/list/cell_change.h"

#include <QString>

#include <optional>
#include <variant>

namespace tessaro {

class CEditor;

/// What a cell refuses, in words.
struct CellFault {
    QString sentence;
};

/// The cells of the event list as texts, and back. Places are measure, beat and tick of the song, lengths beats and
/// ticks of the measure where the event stands. Borrows both.
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
    /// What was typed into a cell but that of the place. Beats are those of the event's place in the song, `time`.
    using Parsed = std::variant<CellChange, CellFault>;
    [[nodiscard]] Parsed parse(const QString& text, const CEvnt& event, std::uint32_t time, ListColumn column) const;

    [[nodiscard]] static CellForm formOf(EvntKind kind, ListColumn column) noexcept;
    /// Where the one value of an event of the master track stands.
    [[nodiscard]] static ListColumn valueColumn(EvntKind kind) noexcept
    {
        return infoOf(kind).value1 == CellForm::none ? ListColumn::data : ListColumn::value1;
    }

private:
    [[nodiscard]] QString value(const CEvnt& event, std::uint32_t time, ListColumn column) const;
    [[nodiscard]] Parsed signature(const QString& line, const CEvnt& event) const;
    [[nodiscard]] Parsed number(const QString& line, CellForm form, std::uint32_t time, ListColumn column) const;

    const CEditor& m_editor;
    const UiText& m_text;
};

} // namespace tessaro
