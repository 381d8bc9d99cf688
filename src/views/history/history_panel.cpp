// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/history/history_panel.h"

#include "core/edit/editor.h"
#include "views/text/ui_text.h"

#include <QKeyEvent>

namespace tessaro {
namespace {

constexpr int edge = 8; ///< the rows stand under the title

} // namespace

HistoryPanel::HistoryPanel(CEditor& editor, const UiText& text, QWidget* parent)
    : QListView(parent)
    , m_editor(editor)
    , m_text(text)
    , m_model(editor, text)
{
    setModel(&m_model);
    setUniformItemSizes(true);
    setFrameShape(NoFrame);
    setViewportMargins(edge, 0, edge, 0);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListView::clicked, this, [this](const QModelIndex& index) { goTo(index); });
    retranslate();
}

void HistoryPanel::refresh()
{
    m_model.refresh();
    setCurrentIndex(m_model.index(m_model.present()));
}

void HistoryPanel::retranslate()
{
    setAccessibleName(m_text.plain(TextId::windowHistory));
    setToolTip(m_text(TextId::historyTip));
    refresh();
}

void HistoryPanel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        goTo(currentIndex());
    else
        QListView::keyPressEvent(event);
}

void HistoryPanel::goTo(const QModelIndex& index)
{
    const int steps = index.row() - m_model.present();
    if (!index.isValid() || (isLocked && isLocked())) return;
    if (steps < 0) m_editor.UndoNode(-steps);
    if (steps > 0) m_editor.RedoNode(steps);
    refresh();
}

} // namespace tessaro
