// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/transport/transport_bar.h"

#include "views/text/ui_text.h"
#include "views/widgets/elided_label.h"
#include "views/widgets/held_action.h"
#include "views/widgets/number_field.h"

#include <QAction>
#include <QHBoxLayout>

namespace tessaro {
namespace {

constexpr QSize stepSize(20, 19);
constexpr int stepIcon = 10;
constexpr int stepPause = 400; // ms
constexpr int stepInterval = 80;

} // namespace

/// Widgets that stay or go together.
class TransportBar::Group : public QWidget {
public:
    explicit Group(QWidget* parent) : QWidget(parent), m_row(new QHBoxLayout(this))
    {
        m_row->setContentsMargins(0, 0, 0, 0);
        m_row->setSpacing(2);
    }
    void add(QWidget* widget) { m_row->addWidget(widget); }
    void space(int width) { m_row->addSpacing(width); }

private:
    QHBoxLayout* m_row;
};

TransportBar::TransportBar(const Icons& icons, const Actions& actions, const UiText& text, QWidget* parent)
    : FoldingRow(parent)
    , m_icons(icons)
    , m_text(text)
    , m_midiSync(actions.midiSync)
    , m_song(new ElidedLabel(this))
{
    addTransport(actions);
    addTempo(actions);
    addLoop(actions);
    addSwitches(actions);
    m_song->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setFiller(m_song);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    retranslate();
}

TransportBar::Group& TransportBar::addGroup(int rank)
{
    auto* group = new Group(this);
    FoldingRow::addGroup(group, rank);
    return *group;
}

QWidget* TransportBar::makeButton(const char* icon, QAction& action)
{
    return new ToolButton(m_icons, QString::fromLatin1(icon), action);
}

QWidget* TransportBar::makeSteps(QAction& up, QAction& down)
{
    auto* column = new QWidget(this);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    const auto add = [&](const char* icon, QAction& action) {
        auto* button = new ToolButton(m_icons, QString::fromLatin1(icon), action, column);
        button->setSize(stepSize, stepIcon);
        button->setAutoRepeat(true);
        button->setAutoRepeatDelay(stepPause);
        button->setAutoRepeatInterval(stepInterval);
        layout->addWidget(button);
    };
    add("up", up);
    add("down", down);
    return column;
}

void TransportBar::addTransport(const Actions& actions)
{
    Group& buttons = addGroup(0);
    const auto addHeld = [&](const char* icon, HeldAction& action) {
        buttons.add(new HeldButton(m_icons, QString::fromLatin1(icon), action));
    };
    buttons.add(makeButton("top", actions.top));
    addHeld("rewind", actions.rewind);
    buttons.add(makeButton("play", actions.play));
    buttons.add(makeButton("stop", actions.stop));
    buttons.add(m_record = new RecordButton(m_icons, QStringLiteral("record"), actions.record));
    addHeld("forward", actions.forward);
    addHeld("fastforward", actions.fastForward);
    buttons.add(makeButton("end", actions.end));

    addGroup(0).add(m_location = new NumberField(QStringLiteral("0000:00:000")));
    addGroup(6).add(m_clock = new NumberDisplay(QStringLiteral("00:00.0")));
}

void TransportBar::addTempo(const Actions& actions)
{
    Group& tempo = addGroup(1);
    tempo.add(m_tempo = new NumberField(QStringLiteral("000.00")));
    tempo.add(makeSteps(actions.tempoUp, actions.tempoDown));
    auto* reset = new ToolButton(m_icons, QStringLiteral("reset"), actions.tempoReset);
    reset->setSize({26, 36}, 16);
    tempo.add(reset);
    addGroup(7).add(m_signature = new NumberDisplay(QStringLiteral("00/00")));
    Group& transpose = addGroup(5);
    transpose.add(m_transpose = new NumberField(QStringLiteral("+00")));
    transpose.add(makeSteps(actions.transposeUp, actions.transposeDown));
}

void TransportBar::addLoop(const Actions& actions)
{
    Group& loop = addGroup(3);
    loop.add(makeButton("loop", actions.loop));
    auto* column = new QWidget(this);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(2, 0, 0, 0);
    layout->setSpacing(0);
    for (NumberField** field : {&m_loopStart, &m_loopEnd}) {
        *field = new NumberField(QStringLiteral("000:00:000"), column, 1.0);
        layout->addWidget(*field);
    }
    loop.add(column);
}

void TransportBar::addSwitches(const Actions& actions)
{
    addGroup(2).add(makeButton("metronome", actions.metronome));
    Group& chase = addGroup(4);
    chase.add(makeButton("midichase", actions.midiChase));
    chase.add(makeButton("viewchase", actions.viewChase));
    chase.add(m_sync = new ToolButton(m_icons, {}, actions.midiSync));
    m_sync->setSize({44, 36}, 0);
    connect(&actions.midiSync, &QAction::changed, this, [this] { showSync(); });
    Group& history = addGroup(8);
    history.add(makeButton("undo", actions.undo));
    history.add(makeButton("redo", actions.redo));
}

void TransportBar::setLocation(const QString& location)
{
    m_location->setBanner({});
    m_location->setValue(location);
}

void TransportBar::setCountIn(const QString& count) { m_location->setBanner(count); }
void TransportBar::setClock(const QString& clock) { m_clock->setValue(clock); }
void TransportBar::setSignature(const QString& signature) { m_signature->setValue(signature); }
void TransportBar::setTranspose(const QString& semitones) { m_transpose->setValue(semitones); }
void TransportBar::setSongName(const QString& name) { m_song->setText(name); }
QString TransportBar::location() const { return m_location->value(); }

void TransportBar::setTempo(const QString& tempo, const QString& relative)
{
    m_tempo->setValue(tempo);
    if (relative == m_relative) return;
    m_relative = relative;
    showTempoCaption();
}

void TransportBar::setLoop(const QString& start, const QString& end)
{
    m_loopStart->setValue(start);
    m_loopEnd->setValue(end);
}

void TransportBar::showTempoCaption()
{
    m_tempo->setCaption(m_relative.isEmpty() ? m_text(TextId::captionTempo) : m_relative);
    m_tempo->setCaptionRole(m_relative.isEmpty() ? QPalette::PlaceholderText : QPalette::Link);
}

void TransportBar::showSync()
{
    m_sync->setFace(m_text(m_midiSync.isChecked() ? TextId::syncMidi : TextId::syncInternal));
}

void TransportBar::retranslate()
{
    m_location->setCaption(m_text(TextId::captionLocation));
    m_clock->setCaption(m_text(TextId::captionClock));
    m_signature->setCaption(m_text(TextId::captionSignature));
    m_transpose->setCaption(m_text(TextId::captionTranspose));
    showTempoCaption();
    showSync();
    const auto name = [this](NumberField& field, TextId id) {
        field.setAccessibleName(m_text(id));
        field.setToolTip(m_text(TextId::tipTyped).arg(m_text(id)));
    };
    name(*m_location, TextId::captionLocation);
    name(*m_tempo, TextId::captionTempo);
    name(*m_transpose, TextId::captionTranspose);
    name(*m_loopStart, TextId::loopStart);
    name(*m_loopEnd, TextId::loopEnd);
    setAccessibleName(m_text(TextId::paneTransport));
}

} // namespace tessaro
