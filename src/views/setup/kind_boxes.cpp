// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/kind_boxes.h"

#include "views/text/ui_text.h"

#include <QLabel>
#include <QVBoxLayout>

namespace tessaro {

KindBoxes::KindBoxes(const QString& sentence, const FilterSwitches& filter, std::size_t kinds, const UiText& text,
                     QWidget* parent)
    : QWidget(parent)
{
    constexpr std::array<TextId, FilterSwitches::count> names{
        TextId::filterNote,  TextId::filterPoly,  TextId::filterControl, TextId::filterProgram,
        TextId::filterAfter, TextId::filterPitch, TextId::filterSysex,   TextId::filterRealTime,
    };
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    auto* says = new QLabel(sentence, this);
    says->setWordWrap(true);
    layout->addWidget(says);
    layout->addSpacing(4);
    for (std::size_t kind = 0; kind < kinds; ++kind) {
        auto* box = new KindBox(text(names[kind]), this);
        box->setChecked(filter.drop[kind] != 0);
        box->setAccessibleDescription(sentence);
        layout->addWidget(box);
        m_boxes.push_back(box);
    }
}

void KindBoxes::apply(FilterSwitches& filter) const
{
    for (std::size_t kind = 0; kind < m_boxes.size(); ++kind) filter.drop[kind] = m_boxes[kind]->isChecked();
}

} // namespace tessaro
