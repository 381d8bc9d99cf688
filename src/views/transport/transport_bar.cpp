// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/transport/transport_bar.h"

#include "views/text/ui_text.h"
#include "views/widgets/elided_label.h"
#include "views/widgets/number_display.h"
#include "views/widgets/tool_button.h"

#include <QHBoxLayout>
#include <QPainter>

namespace tessaro {
namespace {

/// A thin upright line between groups.
class Divider : public QWidget {
public:
    explicit Divider(QWidget* parent) : QWidget(parent) { setFixedSize(1, 32); }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), palette().mid()); }
};

} // namespace

TransportBar::TransportBar(const Icons& icons, const Actions& actions, const UiText& text, QWidget* parent)
    : QWidget(parent)
    , m_text(text)
    , m_location(new NumberDisplay(QStringLiteral("0000:00:000"), this))
    , m_clock(new NumberDisplay(QStringLiteral("00:00.0"), this))
    , m_tempo(new NumberDisplay(QStringLiteral("000.00"), this))
    , m_signature(new NumberDisplay(QStringLiteral("00/00"), this))
    , m_song(new ElidedLabel(this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 8, 16, 9);
    layout->setSpacing(4);
    const auto addButton = [&](const char* icon, QAction& action) {
        layout->addWidget(new ToolButton(icons, QString::fromLatin1(icon), action, this));
    };
    const auto addGap = [&] {
        layout->addSpacing(8);
        layout->addWidget(new Divider(this));
        layout->addSpacing(8);
    };
    addButton("top", actions.top);
    addButton("play", actions.play);
    addButton("stop", actions.stop);
    addGap();
    layout->addWidget(m_location);
    layout->addSpacing(16);
    layout->addWidget(m_clock);
    addGap();
    layout->addWidget(m_tempo);
    layout->addSpacing(16);
    layout->addWidget(m_signature);
    addGap();
    addButton("loop", actions.loop);
    addButton("metronome", actions.metronome);
    addGap();
    addButton("undo", actions.undo);
    addButton("redo", actions.redo);
    layout->addSpacing(8);
    layout->addWidget(m_song, 1);
    m_song->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    retranslate();
}

void TransportBar::setLocation(const QString& location) { m_location->setValue(location); }
void TransportBar::setClock(const QString& clock) { m_clock->setValue(clock); }
void TransportBar::setTempo(const QString& tempo) { m_tempo->setValue(tempo); }
void TransportBar::setSignature(const QString& signature) { m_signature->setValue(signature); }
void TransportBar::setSongName(const QString& name) { m_song->setText(name); }
QString TransportBar::location() const { return m_location->value(); }

void TransportBar::retranslate()
{
    m_location->setCaption(m_text(TextId::captionLocation));
    m_clock->setCaption(m_text(TextId::captionClock));
    m_tempo->setCaption(m_text(TextId::captionTempo));
    m_signature->setCaption(m_text(TextId::captionSignature));
    setAccessibleName(m_text(TextId::paneTransport));
}

void TransportBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    painter.fillRect(0, height() - 1, width(), 1, palette().mid());
}

} // namespace tessaro
