// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHeaderView>

namespace tessaro {

/// The names of the event list's columns, each over the texts of its cells.
class ListHeader : public QHeaderView {
public:
    explicit ListHeader(QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintSection(QPainter* painter, const QRect& place, int column) const override;
};

} // namespace tessaro
