// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include <vector>

namespace tessaro {

/// A part of a row: how wide it is, and how readily it goes when room is short. Rank 0 always stays.
struct FoldPart {
    int width = 0;
    int rank = 0;
};

/// Which parts stay in a row that is `room` wide, with `gap` between parts: those of the highest rank go first.
[[nodiscard]] std::vector<bool> partsThatStay(const std::vector<FoldPart>& parts, int room, int gap);

/// Groups of widgets in a row, with thin lines between them. Where the row is too narrow, whole groups go, the least
/// important first, rather than that something is cut off. What is left over goes to the filler at the end.
class FoldingRow : public QWidget {
public:
    using QWidget::QWidget;

    /// The row takes the group over.
    void addGroup(QWidget* group, int rank);
    void setFiller(QWidget* filler);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Group {
        QWidget* widget;
        int rank;
    };
    void arrange();
    [[nodiscard]] int widthUpTo(int rank) const;
    [[nodiscard]] int tallest() const;

    std::vector<Group> m_groups; ///< children of the row
    QWidget* m_filler = nullptr;
    std::vector<int> m_lines; ///< where the lines between groups stand
};

} // namespace tessaro
