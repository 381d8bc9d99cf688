// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/sys_rec_dialog.h"

#include "views/setup/choice_box.h"
#include "views/setup/position_box.h"
#include "views/text/ui_text.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include <algorithm>

namespace tessaro {
namespace {

constexpr int edge = 16;
constexpr int gap = 8;
constexpr int mostCountIn = 99;

QFormLayout* addForm(QGroupBox& group)
{
    auto* form = new QFormLayout(&group);
    form->setContentsMargins(12, 12, 12, 12);
    form->setHorizontalSpacing(edge);
    form->setVerticalSpacing(gap);
    return form;
}

std::uint32_t tickOf(int setting) { return static_cast<std::uint32_t>(std::max(setting, 0)); }

} // namespace

CSysRecDlg::CSysRecDlg(const RecordPlaySettings& settings, const PushedRange& loop, const PositionScale& scale,
                       const UiText& text, QWidget* parent)
    : QDialog(parent)
    , m_text(text)
    , m_punch{tickOf(settings.punchIn), tickOf(settings.punchOut)}
    , m_loop(loop)
    , m_realTime(new QRadioButton(text(TextId::recordRealTime)))
    , m_step(new QRadioButton(text(TextId::recordStep)))
    , m_block(new ChoiceBox)
    , m_realMode(new ChoiceBox)
    , m_punchIn(new PositionBox(scale))
    , m_punchOut(new PositionBox(scale))
    , m_countIn(new QSpinBox)
    , m_countInPlay(new QCheckBox(text(TextId::recordCountInPlay)))
    , m_midiChase(new QCheckBox(text(TextId::recordMidiChase)))
    , m_viewChase(new QCheckBox(text(TextId::recordViewChase)))
    , m_loopStart(new PositionBox(scale))
    , m_loopEnd(new PositionBox(scale))
    , m_folder(new QLineEdit)
{
    setWindowTitle(text(TextId::recordSettings));
    auto* left = new QVBoxLayout;
    left->addWidget(modeGroup());
    left->addWidget(m_realTimeGroup = realTimeGroup(), 1);
    auto* right = new QVBoxLayout;
    right->addWidget(playGroup());
    right->addWidget(waveGroup());
    right->addStretch();
    auto* columns = new QHBoxLayout;
    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(edge, edge, edge, edge);
    for (QBoxLayout* box : std::initializer_list<QBoxLayout*>{left, right, columns, layout}) box->setSpacing(edge);
    layout->addLayout(columns);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_step, &QAbstractButton::toggled, this, [this] { enable(); });
    connect(m_realMode, &QComboBox::currentIndexChanged, this, [this] { enable(); });
    pair(m_punch, *m_punchIn, *m_punchOut);
    pair(m_loop, *m_loopStart, *m_loopEnd);
    show(settings);
}

QGroupBox* CSysRecDlg::modeGroup()
{
    auto* group = new QGroupBox(m_text(TextId::recordMode));
    auto* layout = new QHBoxLayout(group);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(edge);
    layout->addWidget(m_realTime);
    layout->addWidget(m_step);
    layout->addStretch();
    return group;
}

QGroupBox* CSysRecDlg::realTimeGroup()
{
    m_block->add(m_text(TextId::recordNewBlock), 1);
    m_block->add(m_text(TextId::recordMerge), 0);
    m_realMode->add(m_text(TextId::recordOverdub), 0);
    m_realMode->add(m_text(TextId::recordReplace), 1);
    m_realMode->add(m_text(TextId::recordPunch), 2);
    m_countIn->setRange(0, mostCountIn);
    m_countIn->setSuffix(m_text(TextId::recordCountInBars));
    auto* group = new QGroupBox(m_text(TextId::recordRealTimeGroup));
    QFormLayout* form = addForm(*group);
    form->addRow(m_text(TextId::recordTake), m_block);
    form->addRow(m_text(TextId::recordExisting), m_realMode);
    form->addRow(m_text(TextId::recordPunchIn), m_punchIn);
    form->addRow(m_text(TextId::recordPunchOut), m_punchOut);
    form->addRow(m_text(TextId::recordCountIn), m_countIn);
    form->addRow(m_countInPlay);
    return group;
}

QGroupBox* CSysRecDlg::playGroup()
{
    m_midiChase->setToolTip(m_text(TextId::recordMidiChaseSays));
    m_viewChase->setToolTip(m_text(TextId::recordViewChaseSays));
    auto* group = new QGroupBox(m_text(TextId::recordPlayGroup));
    QFormLayout* form = addForm(*group);
    form->addRow(m_text(TextId::recordLoopStart), m_loopStart);
    form->addRow(m_text(TextId::recordLoopEnd), m_loopEnd);
    form->addRow(m_midiChase);
    form->addRow(m_viewChase);
    return group;
}

QGroupBox* CSysRecDlg::waveGroup()
{
    auto* find = new QPushButton(m_text(TextId::recordBrowse));
    find->setAutoDefault(false);
    connect(find, &QAbstractButton::clicked, this, [this] { browse(); });
    auto* group = new QGroupBox(m_text(TextId::recordWaveGroup));
    QFormLayout* form = addForm(*group);
    form->addRow(m_text(TextId::recordWaveDir), m_folder);
    auto* button = new QHBoxLayout;
    button->addStretch();
    button->addWidget(find);
    form->addRow(button);
    return group;
}

void CSysRecDlg::pair(PushedRange& range, PositionBox& start, PositionBox& end)
{
    const auto show = [&range, &start, &end] {
        start.setTick(range.start);
        end.setTick(range.end);
    };
    start.onSet = [&range, show](std::uint32_t tick) {
        range.setStart(tick);
        show();
    };
    end.onSet = [&range, show](std::uint32_t tick) {
        range.setEnd(tick);
        show();
    };
    for (PositionBox* box : {&start, &end}) box->setToolTip(m_text(TextId::positionForm));
    show();
}

void CSysRecDlg::show(const RecordPlaySettings& settings)
{
    (settings.recMode == 1 ? m_step : m_realTime)->setChecked(true);
    m_block->choose(settings.blockMode == 0 ? 0 : 1);
    m_realMode->choose(settings.realMode == 1 || settings.realMode == 2 ? settings.realMode : 0);
    m_countIn->setValue(settings.countInMeas);
    m_countInPlay->setChecked(settings.countInPlay != 0);
    m_midiChase->setChecked(settings.midiChase != 0);
    m_viewChase->setChecked(settings.viewChase != 0);
    m_folder->setText(songText(settings.waveDir));
    enable();
}

void CSysRecDlg::enable()
{
    m_realTimeGroup->setEnabled(m_realTime->isChecked());
    const bool punches = m_realMode->chosen(0) == 2;
    m_punchIn->setEnabled(punches);
    m_punchOut->setEnabled(punches);
}

void CSysRecDlg::browse()
{
    QFileDialog dialog(this, m_text.plain(TextId::recordWaveDir), m_folder->text());
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() == QDialog::Accepted) m_folder->setText(dialog.selectedFiles().constFirst());
}

RecordPlaySettings CSysRecDlg::settings() const
{
    RecordPlaySettings settings;
    settings.recMode = m_step->isChecked();
    settings.blockMode = m_block->chosen(1);
    settings.realMode = m_realMode->chosen(0);
    settings.punchIn = static_cast<int>(m_punch.start);
    settings.punchOut = static_cast<int>(m_punch.end);
    settings.countInMeas = m_countIn->value();
    settings.countInPlay = m_countInPlay->isChecked();
    settings.waveDir = m_folder->text().toStdString();
    settings.midiChase = m_midiChase->isChecked();
    settings.viewChase = m_viewChase->isChecked();
    return settings;
}

} // namespace tessaro
