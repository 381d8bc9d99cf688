// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/controllers_dialog.h"

#include "views/text/ui_text.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>

namespace tessaro {
namespace {

constexpr int columns = 4;

/// The usual names of the controllers that have one.
const char* controllerName(int controller)
{
    switch (controller) {
    case 0: return "Bank Select";
    case 1: return "Modulation";
    case 2: return "Breath";
    case 4: return "Foot";
    case 5: return "Portamento Time";
    case 6: return "Data Entry";
    case 7: return "Volume";
    case 8: return "Balance";
    case 10: return "Pan";
    case 11: return "Expression";
    case 32: return "Bank Select LSB";
    case 38: return "Data Entry LSB";
    case 64: return "Hold";
    case 65: return "Portamento";
    case 66: return "Sostenuto";
    case 67: return "Soft Pedal";
    case 68: return "Legato";
    case 71: return "Resonance";
    case 72: return "Release Time";
    case 73: return "Attack Time";
    case 74: return "Brightness";
    case 75: return "Decay Time";
    case 84: return "Portamento Control";
    case 91: return "Reverb";
    case 93: return "Chorus";
    case 94: return "Variation";
    case 96: return "Data Increment";
    case 97: return "Data Decrement";
    case 98: return "NRPN LSB";
    case 99: return "NRPN MSB";
    case 100: return "RPN LSB";
    case 101: return "RPN MSB";
    case 120: return "All Sound Off";
    case 121: return "Reset Controllers";
    case 123: return "All Notes Off";
    default: return "";
    }
}

} // namespace

ControllersDialog::ControllersDialog(int first, const ControllerFilter::Switches& drop, const UiText& text,
                                     QWidget* parent)
    : QDialog(parent)
    , m_first(static_cast<std::size_t>(first))
    , m_drop(drop)
{
    setWindowTitle(text.plain(first == 0 ? TextId::controllersFirst : TextId::controllersSecond));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(4);
    constexpr int rows = count / columns;
    for (int i = 0; i < count; ++i) {
        auto* box = new QCheckBox(QStringLiteral("%1 %2").arg(first + i).arg(QLatin1String(controllerName(first + i))));
        box->setChecked(m_drop[m_first + static_cast<std::size_t>(i)] != 0);
        grid->addWidget(box, i % rows, i / rows);
        m_boxes.push_back(box);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(16);
    layout->addLayout(grid);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

ControllerFilter::Switches ControllersDialog::switches() const
{
    ControllerFilter::Switches drop = m_drop;
    for (std::size_t i = 0; i < m_boxes.size(); ++i) drop[m_first + i] = m_boxes[i]->isChecked();
    return drop;
}

} // namespace tessaro
