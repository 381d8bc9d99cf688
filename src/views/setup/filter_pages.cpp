// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/filter_pages.h"

#include "views/setup/kind_boxes.h"
#include "views/text/ui_text.h"

#include <QVBoxLayout>

namespace tessaro {
namespace {

KindBoxes* fill(QWidget& page, const QString& sentence, const FilterSwitches& filter, std::size_t kinds,
                const UiText& text)
{
    auto* boxes = new KindBoxes(sentence, filter, kinds, text, &page);
    auto* layout = new QVBoxLayout(&page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(boxes);
    layout->addStretch();
    return boxes;
}

} // namespace

CSysOutFltrPropPage::CSysOutFltrPropPage(const Settings& settings, const UiText& text, QWidget* parent)
    : SetupPage(parent)
    , m_kinds(fill(*this, text(TextId::setupOutFilterSays), settings.outFilter, FilterSwitches::count, text))
{
}

void CSysOutFltrPropPage::apply(Settings& settings) const { m_kinds->apply(settings.outFilter); }

CSysThruFltrPropPage::CSysThruFltrPropPage(const Settings& settings, const UiText& text, QWidget* parent)
    : SetupPage(parent)
    , m_kinds(fill(*this, text(TextId::setupThruFilterSays), settings.thruFilter, FilterSwitches::realTime, text))
{
}

void CSysThruFltrPropPage::apply(Settings& settings) const { m_kinds->apply(settings.thruFilter); }

} // namespace tessaro
