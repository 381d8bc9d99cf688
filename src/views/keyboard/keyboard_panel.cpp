// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/keyboard/keyboard_panel.h"

#include "views/keyboard/keyboard_view.h"
#include "views/keyboard/typed_keyboard.h"
#include "views/text/ui_text.h"
#include "views/widgets/tool_button.h"

#include <QGridLayout>
#include <QLabel>
#include <QSpinBox>

namespace tessaro {
namespace {

constexpr QSize buttonSize(28, 28);
constexpr int buttonIcon = 12;

} // namespace

KeyboardPanel::KeyboardPanel(TypedKeyboard& keyboard, const Icons& icons, const UiText& text, QWidget* parent)
    : QWidget(parent)
    , m_keyboard(keyboard)
    , m_text(text)
    , m_octaveName(new QLabel(this))
    , m_octave(new QLabel(this))
    , m_velocityName(new QLabel(this))
    , m_velocity(new QSpinBox(this))
    , m_view(new KeyboardView(keyboard, this))
{
    m_octaveDown.setShortcut(QKeySequence(Qt::ALT | Qt::Key_Left));
    m_octaveUp.setShortcut(QKeySequence(Qt::ALT | Qt::Key_Right));
    addActions({&m_octaveDown, &m_octaveUp});
    connect(&m_octaveDown, &QAction::triggered, this, [this] { m_keyboard.setOctave(m_keyboard.octave() - 1); });
    connect(&m_octaveUp, &QAction::triggered, this, [this] { m_keyboard.setOctave(m_keyboard.octave() + 1); });
    m_velocity->setRange(1, 127);
    connect(m_velocity, &QSpinBox::valueChanged, this, [this](int value) { m_keyboard.setVelocity(value); });
    for (QLabel* label : {m_octaveName, m_velocityName}) label->setForegroundRole(QPalette::PlaceholderText);
    m_octave->setAlignment(Qt::AlignCenter);
    m_octave->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("C-1")) + 8);

    auto* settings = new QGridLayout;
    settings->setHorizontalSpacing(4);
    settings->setVerticalSpacing(4);
    const auto addButton = [&](const char* icon, QAction& action, int column) {
        auto* button = new ToolButton(icons, QString::fromLatin1(icon), action, this);
        button->setSize(buttonSize, buttonIcon);
        settings->addWidget(button, 0, column);
    };
    settings->addWidget(m_octaveName, 0, 0);
    addButton("down", m_octaveDown, 1);
    settings->addWidget(m_octave, 0, 2);
    addButton("up", m_octaveUp, 3);
    settings->addWidget(m_velocityName, 1, 0);
    settings->addWidget(m_velocity, 1, 1, 1, 3);
    settings->setRowStretch(2, 1);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(12, 4, 12, 8);
    layout->setHorizontalSpacing(16);
    layout->addLayout(settings, 0, 0);
    layout->addWidget(m_view, 0, 1);
    layout->setColumnStretch(1, 1);
    retranslate();
}

void KeyboardPanel::refresh()
{
    m_octave->setText(QStringLiteral("C%1").arg(m_keyboard.octave()));
    m_velocity->setValue(m_keyboard.velocity());
    m_octaveDown.setEnabled(m_keyboard.octave() > TypedKeyboard::lowestOctave);
    m_octaveUp.setEnabled(m_keyboard.octave() < TypedKeyboard::highestOctave);
    m_view->update();
}

void KeyboardPanel::retranslate()
{
    m_octaveName->setText(m_text(TextId::keyboardOctave));
    m_velocityName->setText(m_text(TextId::velocity));
    m_velocity->setAccessibleName(m_text(TextId::velocity));
    m_octaveDown.setText(m_text(TextId::keyboardOctaveDown));
    m_octaveUp.setText(m_text(TextId::keyboardOctaveUp));
    m_view->setAccessibleName(m_text.plain(TextId::commandKeyboard));
    refresh();
}

} // namespace tessaro
