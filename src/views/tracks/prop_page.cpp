// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/prop_page.h"

#include "views/text/ui_text.h"
#include "views/widgets/keeps_key.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

namespace tessaro {

PropPage::PropPage(const QString& title, QWidget* parent) : QFrame(parent, Qt::Popup), m_form(new QFormLayout)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setFrameShape(QFrame::StyledPanel);
    setAccessibleName(title);
    auto* head = new QLabel(title, this);
    QFont bold = font();
    bold.setBold(true);
    head->setFont(bold);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { close(); });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 12, 16, 16);
    layout->setSpacing(12);
    m_form->setSpacing(8);
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout->addWidget(head);
    layout->addLayout(m_form);
    layout->addWidget(buttons);
}

void PropPage::addField(const UiText& text, TextId label, QWidget& field)
{
    m_form->addRow(text(label), &field);
    field.setAccessibleName(text.plain(label));
}

void PropPage::openAt(const QRect& place, QWidget& first)
{
    adjustSize();
    const QRect desk = parentWidget()->screen()->availableGeometry();
    const int below = place.bottom() + 4;
    const int y = below + height() <= desk.bottom() ? below : std::max(desk.top(), place.top() - 4 - height());
    move(std::clamp(place.left(), desk.left(), std::max(desk.left(), desk.right() - width())), y);
    show();
    first.setFocus();
}

void PropPage::accept()
{
    take();
    close();
}

void PropPage::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        accept();
    else if (event->key() == Qt::Key_Escape)
        close();
    else
        QFrame::keyPressEvent(event);
}

bool PropPage::event(QEvent* event) { return keepsKey(event) || QFrame::event(event); }

} // namespace tessaro
