// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/grid_box.h"

#include "views/editors/view_actions.h"
#include "views/setup/choice_box.h"
#include "views/text/ui_text.h"
#include "views/widgets/tool_button.h"

#include <QHBoxLayout>

namespace tessaro {
namespace {

constexpr QSize freeSize(48, 28);

} // namespace

GridBox::GridBox(const ViewParts& parts, QWidget* parent)
    : QWidget(parent)
    , m_parts(parts)
    , m_note(new ChoiceBox(this))
    , m_shape(new ChoiceBox(this))
    , m_free(new ToolButton(parts.icons, {}, parts.actions[ViewCommand::gridFree], this))
{
    for (int note = 0; note < Grid::lengths; ++note) m_note->add(QStringLiteral("1/%1").arg(1 << note), note);
    for (int shape = 0; shape < Grid::rows; ++shape) {
        const int in = shape == 2 ? 2 : shape < 7 ? 4 : 8; // so many notes in the time of these
        m_shape->add(shape < 2 ? QString() : QStringLiteral("%1:%2").arg(shape + 1).arg(in), shape);
    }
    m_free->setSize(freeSize, 0);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_note);
    layout->addWidget(m_shape);
    layout->addWidget(m_free);
    const auto choose = [this] { m_parts.grid.setIndex(m_shape->chosen(0) * Grid::lengths + m_note->chosen(0)); };
    connect(m_note, &QComboBox::activated, this, choose);
    connect(m_shape, &QComboBox::activated, this, choose);
    m_parts.grid.addObserver(this);
    retranslate();
    showGrid();
}

GridBox::~GridBox() { m_parts.grid.removeObserver(this); }

void GridBox::onGrid()
{
    showGrid();
    if (onChanged) onChanged();
}

void GridBox::showGrid()
{
    m_note->choose(m_parts.grid.exponent());
    m_shape->choose(m_parts.grid.row());
    m_note->setEnabled(!m_parts.grid.isFree());
    m_shape->setEnabled(!m_parts.grid.isFree());
}

void GridBox::retranslate()
{
    const UiText& text = m_parts.text;
    m_shape->setItemText(0, text(TextId::gridStraight));
    m_shape->setItemText(1, text(TextId::gridDotted));
    m_note->setToolTip(text(TextId::gridNote));
    m_note->setAccessibleName(text(TextId::gridNote));
    m_shape->setToolTip(text(TextId::gridShape));
    m_shape->setAccessibleName(text(TextId::gridShape));
    m_free->setFace(text(TextId::gridFreeFace));
}

} // namespace tessaro
