// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/status_line.h"

#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/widgets/elided_label.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QProgressBar>

namespace tessaro {
namespace {

constexpr int iconSize = 16;
constexpr int edge = 12;
constexpr int paintInterval = 100; ///< milliseconds; shorter work is not shown at all

} // namespace

StatusLine::StatusLine(const Icons& icons, QWidget* parent)
    : QWidget(parent)
    , m_icons(icons)
    , m_devices(new ElidedLabel(this))
    , m_news(new ElidedLabel(this))
    , m_progress(new QProgressBar(this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(edge + iconSize + 8, 4, edge, 4);
    layout->setSpacing(16);
    layout->addWidget(m_devices, 3);
    layout->addWidget(m_news, 2);
    layout->addWidget(m_progress);
    m_news->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_news->setRole(QPalette::WindowText);
    m_progress->setFixedSize(160, 8);
    m_progress->setTextVisible(false);
    m_progress->hide();
    setFixedHeight(fontMetrics().height() + 12);
}

void StatusLine::setDevices(const QString& sentence) { m_devices->setText(sentence); }
void StatusLine::setNews(const QString& sentence) { m_news->setText(sentence); }
QString StatusLine::devices() const { return m_devices->text(); }
QString StatusLine::news() const { return m_news->text(); }

void StatusLine::begin()
{
    m_busy = true;
    m_progress->setRange(0, 100);
    m_progress->setValue(0);
    m_sincePainting.start();
}

void StatusLine::range(std::uint32_t low, std::uint32_t high)
{
    m_progress->setRange(static_cast<int>(low), static_cast<int>(high));
}

void StatusLine::pos(std::uint32_t position)
{
    if (m_progress->value() == static_cast<int>(position)) return;
    m_progress->setValue(static_cast<int>(position));
    keepPainting();
}

void StatusLine::text(std::string_view line)
{
    m_news->setText(utf8Text(line));
    keepPainting();
}

/// All windows that show the song paint then, so it must be seldom.
void StatusLine::keepPainting()
{
    if (!m_sincePainting.hasExpired(paintInterval)) return;
    m_progress->show();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    m_sincePainting.start();
}

void StatusLine::end()
{
    m_busy = false;
    m_progress->hide();
    m_news->setText({});
}

void StatusLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    painter.fillRect(0, 0, width(), 1, palette().mid());
    m_icons.draw(painter, QStringLiteral("speaker"), QRectF(edge, (height() - iconSize) / 2.0, iconSize, iconSize),
                 palette().color(QPalette::PlaceholderText));
}

} // namespace tessaro
