// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/sys_dev_page.h"

#include "views/setup/choice_box.h"
#include "views/setup/driver_list_view.h"
#include "views/text/ui_text.h"
#include "views/widgets/port_rows.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace tessaro {
namespace {

constexpr int noDriver = -1;
constexpr int noPort = 0x80; ///< what the settings hold for no device

int driverOfPort(const std::vector<std::int32_t>& ports, int port)
{
    return port >= 0 && port < static_cast<int>(ports.size()) ? ports[static_cast<std::size_t>(port)] : noDriver;
}

void fillDrivers(ChoiceBox& box, const QStringList& names, int driver, const UiText& text)
{
    for (int i = 0; i < names.size(); ++i) box.add(names[i], i);
    box.add(text(TextId::noDevice), noPort);
    box.choose(driver >= 0 && driver < names.size() ? driver : noPort);
}

bool areTooMany(const QStringList& names) { return static_cast<std::size_t>(names.size()) > DriverOrder::mostDrivers; }

} // namespace

bool CSysDevPropPage::refuses(const SetupDrivers& drivers)
{
    return areTooMany(drivers.midiOut) || areTooMany(drivers.waveOut);
}

CSysDevPropPage::CSysDevPropPage(const Settings& settings, const SetupDrivers& drivers, const UiText& text,
                                 QWidget* parent)
    : SetupPage(parent)
    , m_text(text)
    , m_outNames(drivers.midiOut)
    , m_thruDriver(driverOfPort(settings.midiOut, settings.midiThru))
    , m_midiIn(new ChoiceBox(this))
    , m_thru(new ChoiceBox(this))
    , m_midiOut(makeList(settings.midiOut, drivers.midiOut))
    , m_detect(new QPushButton(text(TextId::deviceDetect), this))
    , m_waveIn(new ChoiceBox(this))
    , m_waveOut(makeList(settings.wavOut, drivers.waveOut))
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(2 * gap);
    layout->setVerticalSpacing(gap);
    layout->setColumnStretch(1, 1);
    const auto addChoice = [&](TextId name, ChoiceBox& box) {
        auto* label = new QLabel(text(name), this);
        label->setBuddy(&box);
        box.setAccessibleName(text.plain(name));
        box.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        layout->addWidget(label, layout->rowCount(), 0);
        layout->addWidget(&box, layout->rowCount() - 1, 1);
    };
    auto* says = new QLabel(text(TextId::setupOutputsSay), this);
    says->setWordWrap(true);
    says->setForegroundRole(QPalette::PlaceholderText);

    addList(*layout, text(TextId::deviceMidiOut), *m_midiOut, m_detect);
    layout->addWidget(says, layout->rowCount(), 1);
    addChoice(TextId::deviceMidiThru, *m_thru);
    addChoice(TextId::deviceMidiIn, *m_midiIn);
    addList(*layout, text(TextId::deviceWaveOut), *m_waveOut, nullptr);
    addChoice(TextId::deviceWaveIn, *m_waveIn);

    fillDrivers(*m_midiIn, drivers.midiIn, settings.midiIn, text);
    fillDrivers(*m_waveIn, drivers.waveIn, settings.wavIn, text);
    fillThru();
    m_midiOut->onChanged = [this] { fillThru(); };
    connect(m_thru, &QComboBox::activated, this, [this] {
        const std::vector<std::int32_t> ports = m_midiOut->order().ports();
        m_thruDriver = driverOfPort(ports, m_thru->chosen(noPort));
    });
    m_detect->setAutoDefault(false);
    m_detect->hide();
}

DriverListView* CSysDevPropPage::makeList(std::span<const std::int32_t> ports, const QStringList& names)
{
    return new DriverListView(DriverOrder(ports, static_cast<std::size_t>(names.size())), names, m_text, this);
}

void CSysDevPropPage::addList(QGridLayout& layout, const QString& name, DriverListView& list, QWidget* below)
{
    auto* label = new QLabel(name, this);
    label->setBuddy(&list);
    list.setAccessibleName(QString(name).remove(QLatin1Char('&')));
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(gap);
    const auto addStep = [&](TextId text, int direction) {
        auto* button = new QPushButton(m_text(text), this);
        button->setAutoDefault(false);
        button->setEnabled(list.topLevelItemCount() > 1);
        connect(button, &QAbstractButton::clicked, &list, [&list, direction] { list.stepCurrent(direction); });
        buttons->addWidget(button);
    };
    addStep(TextId::deviceUp, -1);
    addStep(TextId::deviceDown, 1);
    buttons->addStretch();
    if (below) buttons->addWidget(below);
    const int row = layout.rowCount();
    layout.addWidget(label, row, 0, Qt::AlignTop);
    layout.addWidget(&list, row, 1);
    layout.addLayout(buttons, row + 1, 1);
    layout.setRowStretch(row, below ? 2 : 1);
}

/// The rows of thru are the checked outputs; the driver chosen before stays so while it is checked.
void CSysDevPropPage::fillThru()
{
    QStringList ports;
    for (const std::int32_t driver : m_midiOut->order().ports()) ports << m_outNames.value(driver);
    m_thru->clear();
    addPortRows(*m_thru, ports);
    m_thru->add(m_text(TextId::noDevice), noPort);
    m_thru->choose(m_midiOut->order().portOf(m_thruDriver).value_or(noPort));
}

void CSysDevPropPage::setDetection(std::function<std::optional<std::vector<int>>()> detect)
{
    m_detect->show();
    connect(m_detect, &QAbstractButton::clicked, this, [this, detect = std::move(detect)] {
        const std::optional<std::vector<int>> found = detect();
        if (!found) return;
        DriverOrder order = m_midiOut->order();
        order.putFirst(*found);
        m_midiOut->setOrder(std::move(order));
    });
}

void CSysDevPropPage::apply(Settings& settings) const
{
    settings.midiIn = m_midiIn->chosen(settings.midiIn);
    settings.midiThru = m_thru->chosen(settings.midiThru);
    settings.midiOut = m_midiOut->order().ports();
    settings.wavIn = m_waveIn->chosen(settings.wavIn);
    settings.wavOut = m_waveOut->order().ports();
}

} // namespace tessaro
