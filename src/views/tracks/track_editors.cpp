// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/track_editors.h"

#include "core/model/records.h"
#include "views/tracks/track_list_model.h"
#include "views/tracks/transpose_box.h"
#include "views/tracks/trk_pram_view.h"
#include "views/widgets/keeps_key.h"
#include "views/widgets/port_rows.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTimer>

namespace tessaro {
namespace {

constexpr const char* shown = "shown"; ///< the value that an editor was last given

/// A list of ports; a choice from the opened list is the end of editing.
class PortBox : public QComboBox {
public:
    PortBox(CTrkPramView& table, QWidget* parent) : QComboBox(parent), m_table(table)
    {
        view()->installEventFilter(this);
    }

    void showPopup() override
    {
        view()->setMinimumWidth(view()->sizeHintForColumn(0) + 24);
        QComboBox::showPopup();
    }

    void hidePopup() override
    {
        const bool wasOpen = view()->isVisible();
        QComboBox::hidePopup();
        if (wasOpen) QTimer::singleShot(0, this, [this] { m_table.finishEditing(); });
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        keepsKey(event); // and lets the opened list see it
        return QComboBox::eventFilter(watched, event);
    }

private:
    CTrkPramView& m_table;
};

} // namespace

TrackEditors::TrackEditors(const TrackListModel& table, CTrkPramView& view)
    : QStyledItemDelegate(&view)
    , m_table(table)
    , m_view(view)
{
}

QWidget* TrackEditors::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
{
    QWidget* editor = nullptr;
    switch (static_cast<TrackColumn>(index.column())) {
    case TrackColumn::name: {
        auto* line = new QLineEdit(parent);
        line->setPlaceholderText(m_table.unnamed(m_table.row(index).track));
        editor = line;
        break;
    }
    case TrackColumn::port: {
        auto* box = new PortBox(m_view, parent);
        addPortRows(*box, m_table.portNames ? m_table.portNames() : QStringList(), m_table.row(index).port + 1);
        editor = box;
        break;
    }
    case TrackColumn::channel:
    case TrackColumn::transpose: editor = makeNumber(parent, index); break;
    default: return nullptr;
    }
    editor->setAccessibleName(m_table.editorName(index));
    return editor;
}

QWidget* TrackEditors::makeNumber(QWidget* parent, const QModelIndex& index) const
{
    if (static_cast<TrackColumn>(index.column()) == TrackColumn::channel) {
        auto* box = new QSpinBox(parent);
        box->setRange(1, 16);
        return box;
    }
    return new TransposeBox(m_table.transposeOff(), parent);
}

void TrackEditors::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const QVariant value = index.data(Qt::EditRole);
    if (editor->property(shown) == value) return; // what is typed stays when something else of the row changes
    editor->setProperty(shown, value);
    switch (static_cast<TrackColumn>(index.column())) {
    case TrackColumn::name: static_cast<QLineEdit*>(editor)->setText(value.toString()); break;
    case TrackColumn::port: static_cast<QComboBox*>(editor)->setCurrentIndex(value.toInt()); break;
    case TrackColumn::channel: static_cast<QSpinBox*>(editor)->setValue(value.toInt() + 1); break;
    case TrackColumn::transpose: static_cast<QSpinBox*>(editor)->setValue(value.toInt()); break;
    default: break;
    }
}

void TrackEditors::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    const auto number = [editor] {
        auto* box = static_cast<QSpinBox*>(editor);
        box->interpretText();
        return box->value();
    };
    switch (static_cast<TrackColumn>(index.column())) {
    case TrackColumn::name: model->setData(index, static_cast<QLineEdit*>(editor)->text()); break;
    case TrackColumn::port: model->setData(index, static_cast<QComboBox*>(editor)->currentIndex()); break;
    case TrackColumn::channel: model->setData(index, number() - 1); break;
    case TrackColumn::transpose: model->setData(index, number()); break;
    default: break;
    }
}

void TrackEditors::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const
{
    QRect place = option.rect.adjusted(0, 0, 0, -1);
    if (static_cast<TrackColumn>(index.column()) != TrackColumn::name) {
        const int room = editor->parentWidget()->width();
        place.setWidth(std::max(place.width(), std::min(editor->sizeHint().width(), room)));
        place.moveLeft(std::min(place.left(), room - place.width()));
    }
    const int height = std::min(place.height(), std::max(editor->sizeHint().height(), 28));
    place = QRect(place.left(), place.center().y() - height / 2 + 1, place.width(), height);
    editor->setGeometry(place);
}

bool TrackEditors::eventFilter(QObject* editor, QEvent* event)
{
    return keepsKey(event) || QStyledItemDelegate::eventFilter(editor, event);
}

} // namespace tessaro
