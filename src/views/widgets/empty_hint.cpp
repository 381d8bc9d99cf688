// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/empty_hint.h"

#include <QEvent>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaro {
namespace {

constexpr int roomyHeight = 240; ///< pixels, for the picture too

} // namespace

EmptyHint::EmptyHint(const QIcon& icon, QWidget* parent)
    : QWidget(parent)
    , m_icon(icon)
    , m_picture(new QLabel(this))
    , m_sentence(new QLabel(this))
    , m_button(new QPushButton(this))
{
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    m_sentence->setWordWrap(true);
    m_sentence->setAlignment(Qt::AlignCenter);
    m_sentence->setForegroundRole(QPalette::PlaceholderText);
    m_picture->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(this);
    layout->addStretch(2);
    layout->addWidget(m_picture);
    layout->addWidget(m_sentence);
    layout->addWidget(m_button, 0, Qt::AlignHCenter);
    layout->addStretch(3);
    drawIcon();
}

void EmptyHint::setSentence(const QString& sentence) { m_sentence->setText(sentence); }

void EmptyHint::drawIcon() { m_picture->setPixmap(m_icon.pixmap(QSize(48, 48), devicePixelRatioF(), QIcon::Disabled)); }

void EmptyHint::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const bool isRoomy = height() >= roomyHeight;
    m_picture->setVisible(isRoomy);
    const int margin = isRoomy ? 32 : 8;
    layout()->setContentsMargins(32, margin, 32, margin);
    layout()->setSpacing(margin / 2);
}

void EmptyHint::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) drawIcon();
}

} // namespace tessaro
