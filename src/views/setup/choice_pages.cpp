// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/choice_pages.h"

#include "core/doc/settings.h"
#include "views/setup/choice_box.h"
#include "views/setup/number_choices.h"
#include "views/text/ui_text.h"

#include <QFormLayout>
#include <QLabel>
#include <QRadioButton>

namespace tessaro {
namespace {

QVBoxLayout* makeLayout(QWidget& page, const QString& sentence)
{
    auto* says = new QLabel(sentence, &page);
    says->setWordWrap(true);
    auto* layout = new QVBoxLayout(&page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(says);
    layout->addSpacing(4);
    return layout;
}

QFormLayout* addForm(QVBoxLayout& layout)
{
    auto* form = new QFormLayout;
    form->setHorizontalSpacing(16);
    form->setVerticalSpacing(8);
    layout.addLayout(form);
    layout.addStretch();
    return form;
}

QString formatName(int row, const UiText& text)
{
    constexpr int lowestRate = 11025;
    const int rate = lowestRate << (row / 4);
    const int bits = row % 4 < 2 ? 8 : 16;
    return text(row % 2 == 0 ? TextId::waveFormatMono : TextId::waveFormatStereo).arg(rate).arg(bits);
}

ChoiceBox* makeNumberBox(QWidget& page, const std::vector<int>& choices, int value, const QString& unit)
{
    auto* box = new ChoiceBox(&page);
    for (const int choice : choices) box->add(unit.arg(choice), choice);
    const std::optional<std::size_t> row = choiceFor(choices, value);
    box->setPlaceholderText(unit.arg(value));
    box->setCurrentIndex(row ? static_cast<int>(*row) : -1);
    return box;
}

} // namespace

CSysSyncPropPage::CSysSyncPropPage(const Settings& settings, const UiText& text, QWidget* parent)
    : SetupPage(parent)
    , m_internal(new QRadioButton(text(TextId::setupSyncInternal), this))
    , m_midi(new QRadioButton(text(TextId::setupSyncMidi), this))
{
    QVBoxLayout* layout = makeLayout(*this, text(TextId::setupSyncSays));
    layout->addWidget(m_internal);
    layout->addWidget(m_midi);
    layout->addStretch();
    (settings.sync == 0 ? m_internal : m_midi)->setChecked(true);
}

void CSysSyncPropPage::apply(Settings& settings) const { settings.sync = m_midi->isChecked() ? 1 : 0; }

CSysWavFmtPropPage::CSysWavFmtPropPage(const Settings& settings, const UiText& text, QWidget* parent)
    : SetupPage(parent)
    , m_format(new ChoiceBox(this))
{
    constexpr int formats = 12;
    for (int row = 0; row < formats; ++row) m_format->add(formatName(row, text), row);
    m_format->choose(settings.wavInFmt);
    addForm(*makeLayout(*this, text(TextId::setupWaveFormatSays)))->addRow(text(TextId::waveFormat), m_format);
}

void CSysWavFmtPropPage::apply(Settings& settings) const { settings.wavInFmt = m_format->chosen(settings.wavInFmt); }

CSysSysexPropPage::CSysSysexPropPage(const Settings& settings, const SettingsStore& choices, const UiText& text,
                                     QWidget* parent)
    : SetupPage(parent)
    , m_receive(makeNumberBox(*this, numberChoices(choices, "Sysex Size"), settings.sysexSize, text(TextId::unitBytes)))
    , m_send(makeNumberBox(*this, numberChoices(choices, "Sysex Out Size"), settings.sysexOutSize,
                           text(TextId::unitBytes)))
    , m_interval(makeNumberBox(*this, numberChoices(choices, "Sysex Out Int"), settings.sysexOutInt,
                               text(TextId::unitMilliseconds)))
{
    QFormLayout* form = addForm(*makeLayout(*this, text(TextId::setupSysexSays)));
    form->addRow(text(TextId::sysexReceive), m_receive);
    form->addRow(text(TextId::sysexSend), m_send);
    form->addRow(text(TextId::sysexInterval), m_interval);
}

void CSysSysexPropPage::apply(Settings& settings) const
{
    settings.sysexSize = m_receive->chosen(settings.sysexSize);
    settings.sysexOutSize = m_send->chosen(settings.sysexOutSize);
    settings.sysexOutInt = m_interval->chosen(settings.sysexOutInt);
}

} // namespace tessaro
