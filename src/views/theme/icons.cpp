// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/theme/icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

namespace tessaro {
namespace {

/// `side` and the result's pixels are those of the device.
QPixmap tinted(const QString& file, int side, const QColor& colour)
{
    const QString key = QStringLiteral("%1|%2|%3").arg(file).arg(side).arg(colour.rgba());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    pixmap = QPixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    if (QSvgRenderer svg(file); svg.isValid()) svg.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), colour);
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

class TintedEngine : public QIconEngine {
public:
    explicit TintedEngine(QString file) : m_file(std::move(file)) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override
    {
        const double scale = painter->device()->devicePixelRatioF();
        painter->drawPixmap(place, tinted(m_file, static_cast<int>(std::lround(place.width() * scale)), colour(mode)));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        return tinted(m_file, std::min(size.width(), size.height()), colour(mode));
    }
    [[nodiscard]] QIconEngine* clone() const override { return new TintedEngine(m_file); }

private:
    static QColor colour(QIcon::Mode mode)
    {
        const QPalette palette = QApplication::palette();
        if (mode == QIcon::Disabled) return palette.color(QPalette::Disabled, QPalette::ButtonText);
        // A menu draws the icon of its chosen line as an active one.
        const bool chosen = mode == QIcon::Active || mode == QIcon::Selected;
        return palette.color(chosen ? QPalette::HighlightedText : QPalette::ButtonText);
    }

    QString m_file;
};

} // namespace

QString Icons::path(const QString& name) const { return m_folder + '/' + name + QStringLiteral(".svg"); }

void Icons::draw(QPainter& painter, const QString& name, const QRectF& place, const QColor& colour) const
{
    const double scale = painter.device()->devicePixelRatioF();
    painter.drawPixmap(place.toAlignedRect(),
                       tinted(path(name), static_cast<int>(std::lround(place.width() * scale)), colour));
}

QIcon Icons::icon(const QString& name) const { return QIcon(new TintedEngine(path(name))); }
QIcon Icons::picture(const QString& name) const { return QIcon(path(name)); }

} // namespace tessaro
