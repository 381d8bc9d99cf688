// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/master/tempo_line.h"

#include "views/list/list_view.h"
#include "views/master/tempo_scale.h"
#include "views/text/ui_text.h"
#include "views/widgets/keeps_key.h"

#include <QRect>

#include <algorithm>
#include <utility>

namespace tessaro {

void TempoLine::open(const QRect& place, const EvntRef& ref)
{
    close();
    m_ref = ref;
    show(place);
}

void TempoLine::open(const QRect& place, EvntDraft draft)
{
    close();
    m_ref = {};
    m_draft = std::move(draft);
    m_fresh.Set(m_draft.record());
    show(place);
}

void TempoLine::show(QRect place)
{
    m_line = new QLineEdit(&m_room);
    m_line->setText(m_list.cells().typed(about(), time(), column()));
    m_line->setAccessibleName(kindName(kindOf(about()), m_text));
    m_line->setPlaceholderText(m_line->accessibleName());
    m_line->selectAll();
    m_line->installEventFilter(this);
    place.setHeight(std::max(place.height(), m_line->sizeHint().height()));
    const int last = std::max(m_room.width() - place.width(), TempoScale::left);
    place.moveLeft(std::clamp(place.left(), TempoScale::left, last));
    place.moveBottom(std::min(place.bottom(), m_room.height() - 1));
    m_line->setGeometry(place);
    m_line->show();
    m_line->setFocus();
    connect(m_line, &QLineEdit::textEdited, this, [this] { m_fault.end(); });
}

void TempoLine::close()
{
    m_fault.end();
    if (!m_line) return;
    m_line->removeEventFilter(this);
    m_line->hide();
    m_line->deleteLater();
    m_line = nullptr;
}

void TempoLine::songChanged()
{
    if (m_ref.evnt) close();
}

void TempoLine::take()
{
    const ListColumn at = column();
    const EvntKind kind = kindOf(about());
    const auto parsed = m_list.cells().parse(m_line->text(), about(), time(), at);
    if (const auto* fault = std::get_if<CellFault>(&parsed)) {
        m_fault.say(fault->sentence, *m_line);
        return;
    }
    const auto& change = std::get<CellChange>(parsed);
    const bool isModified = m_line->isModified();
    close();
    m_room.setFocus();
    if (m_ref.evnt) {
        if (isModified) m_list.edits().change({&m_ref, 1}, at, change, kind);
        return;
    }
    applyChange(change, at, m_draft);
    if (const auto made = m_list.edits().insert(0, m_draft)) m_list.goTo(*made);
}

bool TempoLine::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_line) return QObject::eventFilter(watched, event);
    if (keepsKey(event)) return true;
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            take();
            return true;
        }
        if (key == Qt::Key_Escape) {
            close();
            m_room.setFocus();
            return true;
        }
    }
    if (event->type() == QEvent::FocusOut) close();
    return QObject::eventFilter(watched, event);
}

} // namespace tessaro
