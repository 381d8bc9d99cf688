// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

class QPainter;
class QRectF;

namespace tessaro {

/// Icons of one colour, from SVG files on a grid of 24 units; the colour comes with the drawing, so they suit every
/// palette and scale. A file that is missing draws nothing.
class Icons {
public:
    explicit Icons(QString folder) : m_folder(std::move(folder)) {}

    void draw(QPainter& painter, const QString& name, const QRectF& place, const QColor& colour) const;
    /// For menus and buttons of the toolkit: tinted as the text of a button.
    [[nodiscard]] QIcon icon(const QString& name) const;
    /// A picture with colours of its own.
    [[nodiscard]] QIcon picture(const QString& name) const;

private:
    [[nodiscard]] QString path(const QString& name) const;

    QString m_folder;
};

} // namespace tessaro
