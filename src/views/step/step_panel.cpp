// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/step/step_panel.h"

#include "views/text/ui_text.h"
#include "views/widgets/tool_button.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>

namespace tessaro {
namespace {

constexpr const char* lengthIcons[] = {"note1", "note2", "note4", "note8", "note16", "note32"};
constexpr TextId lengthNames[] = {TextId::stepWhole,  TextId::stepHalf, TextId::stepQuarter,
                                  TextId::stepEighth, TextId::step16th, TextId::step32nd};
constexpr const char* kindFaces[] = {"•", "3", "5"};
constexpr TextId kindNames[] = {TextId::stepDotted, TextId::stepTriplet, TextId::stepQuintuplet};

} // namespace

StepPanel::StepPanel(StepChooser& chooser, const Icons& icons, const UiText& text, QWidget* parent)
    : QWidget(parent)
    , m_chooser(chooser)
    , m_text(text)
    , m_velocityName(new QLabel(this))
    , m_velocity(new QSpinBox(this))
    , m_durationName(new QLabel(this))
    , m_duration(new QSpinBox(this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 4, 12, 4);
    layout->setSpacing(2);
    int key = Qt::Key_1;
    const auto add = [&](QAction& action, const char* icon) {
        action.setCheckable(true);
        action.setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(key++)));
        addAction(&action);
        auto* button = new ToolButton(icons, QString::fromLatin1(icon), action, this);
        layout->addWidget(button);
        return button;
    };
    for (int i = 0; i < StepChooser::lengths; ++i) {
        QAction& action = length(i);
        add(action, lengthIcons[i]);
        connect(&action, &QAction::triggered, this, [this, i] {
            m_chooser.setLength(i);
            showChoice();
        });
    }
    layout->addSpacing(12);
    for (const StepKind kind : {StepKind::dotted, StepKind::triplet, StepKind::quintuplet}) {
        QAction& action = this->kind(kind);
        add(action, "")->setFace(QString::fromUtf8(kindFaces[static_cast<int>(kind) - 1]));
        connect(&action, &QAction::triggered, this, [this, kind] {
            m_chooser.setKind(m_chooser.kind() == kind ? StepKind::plain : kind);
            showChoice();
        });
    }
    layout->addSpacing(12);
    const auto addBox = [&](QLabel& name, QSpinBox& box, int most, auto set) {
        name.setForegroundRole(QPalette::PlaceholderText);
        layout->addWidget(&name);
        layout->addSpacing(4);
        box.setRange(1, most);
        box.setValue(100);
        layout->addWidget(&box);
        layout->addSpacing(12);
        connect(&box, &QSpinBox::valueChanged, this, set);
    };
    addBox(*m_velocityName, *m_velocity, 127, [this](int value) { m_chooser.setVelocity(value); });
    addBox(*m_durationName, *m_duration, StepChooser::mostDuration,
           [this](int value) { m_chooser.setDuration(value); });
    connect(&m_rest, &QAction::triggered, this, [this] { onRest(); });
    layout->addWidget(new ToolButton(icons, QStringLiteral("rest"), m_rest, this));
    layout->addStretch(1);
    showChoice();
    retranslate();
}

void StepPanel::showChoice()
{
    for (int i = 0; i < StepChooser::lengths; ++i) length(i).setChecked(i == m_chooser.length());
    for (const StepKind kind : {StepKind::dotted, StepKind::triplet, StepKind::quintuplet})
        this->kind(kind).setChecked(kind == m_chooser.kind());
}

void StepPanel::retranslate()
{
    for (std::size_t i = 0; i < m_lengths.size(); ++i) m_lengths[i].setText(m_text(lengthNames[i]));
    for (std::size_t i = 0; i < m_kinds.size(); ++i) m_kinds[i].setText(m_text(kindNames[i]));
    m_rest.setText(m_text(TextId::stepRest));
    m_velocityName->setText(m_text(TextId::velocity));
    m_velocity->setAccessibleName(m_text(TextId::velocity));
    m_durationName->setText(m_text(TextId::stepDuration));
    m_duration->setAccessibleName(m_text(TextId::stepDuration));
}

} // namespace tessaro
