// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/history/history_model.h"

#include "core/edit/editor.h"
#include "views/text/ui_text.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QSize>

namespace tessaro {

namespace {

constexpr int rowHeight = 24;

} // namespace

int HistoryModel::present() const { return m_editor.GetUndoRedoIndex() + 1; }

void HistoryModel::refresh()
{
    beginResetModel();
    endResetModel();
}

int HistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_editor.GetUndoRedoCount() + 1;
}

QString HistoryModel::title(int row) const
{
    if (row == 0) return m_text(TextId::historyStart);
    CUndoNode* node = nullptr;
    return m_editor.GetUndoNode(row - 1, &node) ? utf8Text(node->title) : QString();
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const
{
    switch (role) {
    case Qt::DisplayRole: return title(index.row());
    case Qt::FontRole:
        if (index.row() == present()) {
            QFont font = QApplication::font();
            font.setBold(true);
            return font;
        }
        return {};
    case Qt::SizeHintRole: return QSize(0, rowHeight);
    case Qt::ForegroundRole:
        return index.row() > present() ? QVariant(QApplication::palette().placeholderText()) : QVariant();
    default: return {};
    }
}

} // namespace tessaro
