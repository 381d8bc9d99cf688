// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/setup_sheet.h"

#include "views/setup/choice_pages.h"
#include "views/setup/filter_pages.h"
#include "views/setup/in_filter_page.h"
#include "views/setup/sys_dev_page.h"
#include "views/text/ui_text.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QShortcut>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace tessaro {
namespace {

constexpr int edge = 16;
constexpr int rowPadding = 12;
constexpr QSize usualSize(720, 560);

/// The name of a page, with air around it; the chosen one on a ground of the accent colour.
class PageNames : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const bool chosen = option.state & QStyle::State_Selected;
        const bool possible = option.state & QStyle::State_Enabled;
        const QPalette::ColorGroup group = possible ? QPalette::Normal : QPalette::Disabled;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (chosen) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(option.palette.color(QPalette::Highlight));
            painter->drawRoundedRect(option.rect.adjusted(0, 1, 0, -1), 5, 5);
        }
        painter->setPen(option.palette.color(group, chosen ? QPalette::HighlightedText : QPalette::Text));
        painter->drawText(option.rect.adjusted(rowPadding, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                          index.data().toString());
        painter->restore();
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return {option.fontMetrics.horizontalAdvance(index.data().toString()) + 2 * rowPadding,
                option.fontMetrics.height() + rowPadding};
    }
};

} // namespace

SetupSheet::SetupSheet(const Settings& settings, const SetupDrivers& drivers, const SettingsStore& choices,
                       const UiText& text, QWidget* parent)
    : QDialog(parent)
    , m_before(settings)
    , m_list(new QListWidget(this))
    , m_heading(new QLabel(this))
    , m_stack(new QStackedWidget(this))
{
    setWindowTitle(text(TextId::systemSetup));
    if (!CSysDevPropPage::refuses(drivers)) m_devices = new CSysDevPropPage(settings, drivers, text);
    addPage(text(TextId::setupDevices), m_devices);
    addPage(text(TextId::setupOutFilter), new CSysOutFltrPropPage(settings, text));
    addPage(text(TextId::setupThruFilter), new CSysThruFltrPropPage(settings, text));
    addPage(text(TextId::setupInFilter), new CSysInFltrPropPage(settings, text));
    addPage(text(TextId::setupSync), new CSysSyncPropPage(settings, text));
    addPage(text(TextId::setupWaveFormat), new CSysWavFmtPropPage(settings, text));
    addPage(text(TextId::setupSysex), new CSysSysexPropPage(settings, choices, text));
    layOut(text);

    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        m_stack->setCurrentIndex(row);
        m_heading->setText(m_list->item(row)->text());
    });
    m_list->setCurrentRow(m_devices ? 0 : 1);
    m_list->setFocus();
}

/// A page that is null has a row that cannot be chosen.
void SetupSheet::addPage(const QString& name, SetupPage* page)
{
    auto* item = new QListWidgetItem(name, m_list);
    if (page)
        m_pages.push_back(page);
    else
        item->setFlags(Qt::NoItemFlags);
    m_stack->addWidget(page ? page : new QWidget);
}

void SetupSheet::layOut(const UiText& text)
{
    m_list->setAccessibleName(text(TextId::setupPages));
    m_list->setItemDelegate(new PageNames(m_list));
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setFixedWidth(m_list->sizeHintForColumn(0) + edge);
    m_list->viewport()->setAutoFillBackground(false);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    large.setBold(true);
    m_heading->setFont(large);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* body = new QVBoxLayout;
    body->setContentsMargins(edge, 4, edge, edge);
    body->setSpacing(12);
    body->addWidget(m_heading);
    body->addWidget(m_stack, 1);
    body->addWidget(buttons);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(rowPadding, rowPadding, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_list);
    layout->addLayout(body, 1);
    resize(usualSize);

    const auto onKey = [this](QKeyCombination key, int direction) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, [this, direction] { turn(direction); });
    };
    onKey(Qt::CTRL | Qt::Key_PageDown, 1);
    onKey(Qt::CTRL | Qt::Key_PageUp, -1);
}

void SetupSheet::turn(int direction)
{
    const int row = m_list->currentRow() + direction;
    const QListWidgetItem* item = m_list->item(row);
    if (item && item->flags() & Qt::ItemIsEnabled) m_list->setCurrentRow(row);
}

QWidget& SetupSheet::page(int row) const { return *m_stack->widget(row); }

Settings SetupSheet::settings() const
{
    Settings settings = m_before;
    for (const SetupPage* page : m_pages) page->apply(settings);
    return settings;
}

} // namespace tessaro
