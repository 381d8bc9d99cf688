// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/grid_box.h"

#include "views/setup/choice_box.h"
#include "views/text/ui_text.h"
#include "views/widgets/tool_button.h"

#include <QHBoxLayout>
#include <QSignalBlocker>

namespace tessaro {

GridBox::GridBox(const Icons& icons, const UiText& text, QWidget* parent)
    : QWidget(parent)
    , m_text(text)
    , m_note(new ChoiceBox(this))
    , m_shape(new ChoiceBox(this))
{
    for (int note = 0; note < notes; ++note) m_note->add(QStringLiteral("1/%1").arg(1 << note), note);
    for (int shape = 0; shape < shapes; ++shape) {
        const int in = shape == 2 ? 2 : shape < 7 ? 4 : 8; // so many notes in the time of these
        m_shape->add(shape < 2 ? QString() : QStringLiteral("%1:%2").arg(shape + 1).arg(in), shape);
    }
    m_free.setCheckable(true);
    auto* free = new ToolButton(icons, {}, m_free, this);
    free->setSize({48, 28}, 0);
    free->setObjectName(QStringLiteral("free"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    for (QWidget* part : {static_cast<QWidget*>(m_note), static_cast<QWidget*>(m_shape), static_cast<QWidget*>(free)})
        layout->addWidget(part);
    connect(m_note, &QComboBox::activated, this, [this] { tell(); });
    connect(m_shape, &QComboBox::activated, this, [this] { tell(); });
    connect(&m_free, &QAction::triggered, this, [this] { tell(); });
    retranslate();
}

void GridBox::show(int index, bool free)
{
    m_note->choose(index % notes);
    m_shape->choose(index / notes);
    m_free.setChecked(free);
    m_note->setEnabled(!free);
    m_shape->setEnabled(!free);
}

int GridBox::index() const { return m_shape->chosen(0) * notes + m_note->chosen(0); }

void GridBox::tell()
{
    show(index(), m_free.isChecked());
    if (onChosen) onChosen(index(), m_free.isChecked());
}

void GridBox::retranslate()
{
    m_shape->setItemText(0, m_text(TextId::gridStraight));
    m_shape->setItemText(1, m_text(TextId::gridDotted));
    m_note->setToolTip(m_text(TextId::gridNote));
    m_note->setAccessibleName(m_text(TextId::gridNote));
    m_shape->setToolTip(m_text(TextId::gridShape));
    m_shape->setAccessibleName(m_text(TextId::gridShape));
    m_free.setIconText(m_text(TextId::gridFree));
    static_cast<ToolButton*>(findChild<QWidget*>(QStringLiteral("free")))->setFace(m_text(TextId::gridFreeFace));
}

} // namespace tessaro
