// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/empty_hint.h"

#include <QEvent>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaro {
namespace {

constexpr int pictureSize = 48;

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
    layout->setContentsMargins(32, 12, 32, 12);
    layout->setSpacing(12);
    layout->addStretch(2);
    layout->addWidget(m_picture);
    layout->addWidget(m_sentence);
    layout->addWidget(m_button, 0, Qt::AlignHCenter);
    layout->addStretch(3);
    drawIcon();
}

void EmptyHint::setSentence(const QString& sentence) { m_sentence->setText(sentence); }

void EmptyHint::drawIcon()
{
    m_picture->setPixmap(m_icon.pixmap(QSize(pictureSize, pictureSize), devicePixelRatioF(), QIcon::Disabled));
}

QSize EmptyHint::sizeHint() const
{
    const int picture = m_picture->isHidden() ? pictureSize + layout()->spacing() : 0;
    return QWidget::sizeHint() + QSize(0, picture);
}

/// In a low place the sentence comes first.
void EmptyHint::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_picture->setVisible(height() >= sizeHint().height());
}

void EmptyHint::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) drawIcon();
}

} // namespace tessaro
