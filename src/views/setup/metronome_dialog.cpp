// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/metronome_dialog.h"

#include "views/setup/choice_box.h"
#include "views/text/ui_text.h"
#include "views/widgets/port_rows.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

namespace tessaro {
namespace {

constexpr int edge = 16;
constexpr int gap = 8;
constexpr int halfBeat = 250; // ms
constexpr int noPort = 0x80;

QSpinBox* makeNumber(QWidget& parent, int least, int most, int value)
{
    auto* box = new QSpinBox(&parent);
    box->setRange(least, most);
    box->setValue(value);
    return box;
}

} // namespace

MetronomeDialog::MetronomeDialog(const MetronomeSettings& settings, const QStringList& ports, ClickPreview::Send send,
                                 const UiText& text, QWidget* parent)
    : QDialog(parent)
    , m_before(settings)
    , m_preview(std::move(send))
    , m_port(new ChoiceBox(this))
    , m_channel(makeNumber(*this, 1, 16, settings.channel + 1))
    , m_bar(makeSound(settings.note1, settings.velocity1, text.plain(TextId::metronomeBar), text))
    , m_beat(makeSound(settings.note2, settings.velocity2, text.plain(TextId::metronomeBeat), text))
    , m_listen(new QPushButton(text(TextId::metronomeListen), this))
{
    setWindowTitle(text(TextId::metronomeSettings));
    layOut(ports, text);
    m_timer.setInterval(halfBeat);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] { step(); });
    connect(m_listen, &QAbstractButton::clicked, this, [this] { listen(); });
}

MetronomeDialog::~MetronomeDialog() { m_preview.silence(); }

MetronomeDialog::Sound MetronomeDialog::makeSound(int note, int velocity, const QString& name, const UiText& text)
{
    const Sound sound{makeNumber(*this, 0, 127, note), makeNumber(*this, 0, 127, velocity)};
    sound.note->setAccessibleName(name + QLatin1Char(' ') + text(TextId::metronomeNote));
    sound.velocity->setAccessibleName(name + QLatin1Char(' ') + text(TextId::metronomeVelocity));
    return sound;
}

void MetronomeDialog::layOut(const QStringList& ports, const UiText& text)
{
    addPortRows(*m_port, ports);
    m_port->add(text(TextId::noDevice), noPort);
    m_port->choose(m_before.port >= 0 && m_before.port < ports.size() ? m_before.port : noPort);

    auto* form = new QGridLayout;
    form->setHorizontalSpacing(edge);
    form->setVerticalSpacing(gap);
    form->setColumnStretch(1, 1);
    form->setColumnStretch(2, 1);
    const auto addLabel = [&](TextId name, QWidget& buddy, int row) {
        auto* label = new QLabel(text(name), this);
        label->setBuddy(&buddy);
        form->addWidget(label, row, 0);
    };
    addLabel(TextId::metronomePort, *m_port, 0);
    form->addWidget(m_port, 0, 1, 1, 2);
    addLabel(TextId::metronomeChannel, *m_channel, 1);
    form->addWidget(m_channel, 1, 1);
    form->addWidget(new QLabel(text(TextId::metronomeNote), this), 2, 1);
    form->addWidget(new QLabel(text(TextId::metronomeVelocity), this), 2, 2);
    const auto addSound = [&](TextId name, const Sound& sound, int row) {
        addLabel(name, *sound.note, row);
        form->addWidget(sound.note, row, 1);
        form->addWidget(sound.velocity, row, 2);
    };
    addSound(TextId::metronomeBar, m_bar, 3);
    addSound(TextId::metronomeBeat, m_beat, 4);

    m_listen->setAutoDefault(false);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* last = new QHBoxLayout;
    last->setSpacing(edge);
    last->addWidget(m_listen);
    last->addWidget(buttons, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(edge, edge, edge, edge);
    layout->setSpacing(edge);
    layout->addLayout(form);
    layout->addStretch();
    layout->addLayout(last);
}

void MetronomeDialog::listen()
{
    m_preview.start();
    m_timer.start();
    step();
}

void MetronomeDialog::step()
{
    if (!m_preview.step(settings())) m_timer.stop();
}

MetronomeSettings MetronomeDialog::settings() const
{
    const int port = m_port->chosen(noPort);
    return {.port = port == noPort && m_before.port >= m_port->count() - 1 ? m_before.port : port,
            .channel = m_channel->value() - 1,
            .note1 = m_bar.note->value(),
            .note2 = m_beat.note->value(),
            .velocity1 = m_bar.velocity->value(),
            .velocity2 = m_beat.velocity->value()};
}

} // namespace tessaro
