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

/// The small editor of one note, or of several: then it shows what they have in common. A field that was typed into
/// takes effect when it is left, as a step of its own; what cannot be read gives way to what stood there. It floats
/// above its window and waits for nobody.
class CPnoNotePropPage : public QWidget {
public:
    enum class Field { time, length, key, velocity };
    static constexpr std::size_t fields = 4;

    CPnoNotePropPage(const ViewParts& parts, QWidget* parent);
    ~CPnoNotePropPage() override;

    /// In the order of the song. Shows them as they are now.
    void setNotes(std::vector<EvntRef> notes);
    [[nodiscard]] const std::vector<EvntRef>& notes() const { return m_notes; }
    [[nodiscard]] QLineEdit& field(Field field) const { return *m_lines[static_cast<std::size_t>(field)]; }
    void retranslate();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] _EDT_EVNT record(const EvntRef& note) const;
    [[nodiscard]] static std::uint32_t valueOf(Field field, const EvntRef& note);
    [[nodiscard]] QString textOf(Field field, const _EDT_EVNT& note) const;
    /// False for a text that is none.
    [[nodiscard]] bool write(Field field, const QString& text, _EDT_EVNT& note) const;
    [[nodiscard]] std::uint32_t beatClock(std::uint32_t time) const;
    void showField(Field field);
    void take(Field field);
    void change(Field field, const QString& text);

    ViewParts m_parts;
    std::vector<EvntRef> m_notes;
    // Children of the widget.
    QLabel* m_head;
    std::array<QLabel*, fields> m_labels{};
    std::array<QLineEdit*, fields> m_lines{};
};

} // namespace tessaro
