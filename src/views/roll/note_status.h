// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"

#include <QWidget>

#include <array>

namespace tessaro {

class UiText;

/// The line below the notes: place, length, key and velocity of what lies under the pointer, and how many notes are
/// selected, in tabular figures.
class NoteStatus : public QWidget {
public:
    /// Borrows the texts.
    explicit NoteStatus(const UiText& text, QWidget* parent = nullptr);

    struct Values {
        QString place;
        QString length;
        QString key;
        QString velocity;
        bool operator==(const Values&) const = default;
    };
    void show(const Values& values);
    [[nodiscard]] const Values& values() const { return m_values; }
    void setSelected(std::size_t notes);
    void retranslate();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Part {
        TextId caption;
        const QString& value;
        QLatin1String widest;
    };
    [[nodiscard]] std::array<Part, 4> parts() const;
    /// All that stands there, for those who cannot see it.
    [[nodiscard]] QString spoken() const;

    const UiText& m_text;
    Values m_values;
    std::size_t m_selected = 0;
};

} // namespace tessaro
