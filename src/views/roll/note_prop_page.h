// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "core/model/records.h"
#include "views/editors/view_parts.h"

#include <QWidget>

#include <array>
#include <functional>
#include <span>
#include <vector>

class QLabel;
class QLineEdit;

namespace tessaro {

class NoteCommands;

/// The small editor of one note, or of several: then it shows what they have in common. A field that was typed into
/// takes effect when it is left, as a step of its own; what cannot be read gives way to what stood there. It floats
/// above its window and waits for nobody. It asks for the notes whenever it needs them, and keeps none.
class CPnoNotePropPage : public QWidget {
public:
    enum class Field { time, length, key, velocity };
    static constexpr std::size_t fields = 4;

    /// Answers the notes to show, in the order of the song.
    using Notes = std::function<std::vector<EvntRef>()>;
    CPnoNotePropPage(const ViewParts& parts, NoteCommands& commands, Notes notes, QWidget* parent);
    ~CPnoNotePropPage() override;

    /// Shows the notes as they are now, while it can be seen.
    void refresh();
    [[nodiscard]] QLineEdit& field(Field field) const { return *m_lines[static_cast<std::size_t>(field)]; }
    void retranslate();

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] static std::uint32_t valueOf(Field field, const EvntRef& note);
    [[nodiscard]] QString textOf(Field field, const _EDT_EVNT& note) const;
    /// False for a text that is none.
    [[nodiscard]] bool write(Field field, const QString& text, _EDT_EVNT& note) const;
    void showField(Field field, std::span<const EvntRef> notes);
    void take(Field field);
    void change(Field field, const QString& text);

    ViewParts m_parts;
    NoteCommands& m_commands;
    Notes m_notes;
    // Children of the widget.
    QLabel* m_head;
    std::array<QLabel*, fields> m_labels{};
    std::array<QLineEdit*, fields> m_lines{};
};

} // namespace tessaro
