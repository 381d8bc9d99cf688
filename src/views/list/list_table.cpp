// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/list_table.h"

#include "core/doc/list_settings.h"
#include "views/list/list_font.h"
#include "views/list/list_header.h"
#include "views/text/ui_text.h"

#include <QEvent>
#include <QScrollBar>

namespace tessaro {

ListTable::ListTable(ListSettings* settings, const UiText& text, QWidget* parent)
    : QTableView(parent)
    , m_settings(settings)
    , m_text(text)
{
    setHorizontalHeader(new ListHeader(this));
    setSelectionMode(NoSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    setFrameShape(NoFrame);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setMinimumSectionSize(40);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

void ListTable::begin(QAbstractItemModel& model)
{
    setModel(&model);
    readSettings();
    QObject::connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (m_settings && column < listColumns - 1 && width > 0) // 0 is that of one that is hidden
            m_settings->columnWidths[static_cast<std::size_t>(column)] = width;
    });
}

void ListTable::readSettings()
{
    for (int column = 0; column < listColumns; ++column)
        setColumnWidth(column, m_settings ? m_settings->columnWidths[static_cast<std::size_t>(column)]
                                          : ListSettings::defaultWidth);
    const auto font = m_settings ? listFont(m_settings->font) : std::nullopt;
    if (font) setFont(*font);
    sizeRows();
}

void ListTable::showColumnsOf(int track)
{
    for (const ListColumn column : {ListColumn::channel, ListColumn::value2, ListColumn::gate})
        setColumnHidden(static_cast<int>(column), track == 0);
}

void ListTable::sizeRows() { verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8); }

void ListTable::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) sizeRows();
}

void ListTable::retranslate()
{
    verticalScrollBar()->setAccessibleName(m_text(TextId::scrollEvents));
    horizontalScrollBar()->setAccessibleName(m_text(TextId::scrollColumns));
}

} // namespace tessaro
