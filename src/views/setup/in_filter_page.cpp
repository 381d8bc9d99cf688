// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/in_filter_page.h"

#include "views/setup/controllers_dialog.h"
#include "views/setup/kind_boxes.h"
#include "views/text/ui_text.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace tessaro {

CSysInFltrPropPage::CSysInFltrPropPage(const Settings& settings, const UiText& text, QWidget* parent)
    : SetupPage(parent)
    , m_text(text)
    , m_controllers(settings.inFilter.drop[FilterSwitches::control], settings.inController)
    , m_kinds(new KindBoxes(text(TextId::setupInFilterSays), settings.inFilter, FilterSwitches::count, text, this))
{
    auto* details = new QHBoxLayout;
    details->setSpacing(gap);
    details->addWidget(addButton(text(TextId::controllersFirst), 0));
    details->addWidget(addButton(text(TextId::controllersSecond), ControllersDialog::count));
    details->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2 * gap);
    layout->addWidget(m_kinds);
    layout->addLayout(details);
    layout->addStretch();
    connect(&m_kinds->box(FilterSwitches::control), &QAbstractButton::clicked, this, [this] {
        m_controllers.click();
        showBox();
    });
    showBox();
}

QPushButton* CSysInFltrPropPage::addButton(const QString& name, int first)
{
    auto* button = new QPushButton(name, this);
    button->setAutoDefault(false);
    connect(button, &QAbstractButton::clicked, this, [this, first] { chooseControllers(first); });
    return button;
}

void CSysInFltrPropPage::chooseControllers(int first)
{
    ControllersDialog dialog(first, m_controllers.switches(), m_text, this);
    const bool taken = dialog.exec() == QDialog::Accepted;
    m_controllers.set(taken ? dialog.switches() : ControllerFilter::Switches(m_controllers.switches()));
    showBox();
}

void CSysInFltrPropPage::showBox()
{
    constexpr std::array states{Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
    m_kinds->box(FilterSwitches::control).setCheckState(states[static_cast<std::size_t>(m_controllers.box())]);
}

void CSysInFltrPropPage::apply(Settings& settings) const
{
    m_kinds->apply(settings.inFilter);
    settings.inFilter.drop[FilterSwitches::control] = m_controllers.box();
    settings.inController = m_controllers.switches();
}

} // namespace tessaro
