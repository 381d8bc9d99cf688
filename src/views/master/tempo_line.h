// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "core/model/evnt.h"
#include "views/list/evnt_cells.h"
#include "views/list/fault_label.h"

#include <QLineEdit>
#include <QObject>
#include <QPointer>

class QRect;

namespace tessaro {

class CListVw;

/// The line in which the value of an event of the master track is typed, over the picture: of one that stands there, or
/// of a new one, which then comes with its value in one step. Enter takes what can be read, Escape and a click
/// elsewhere leave all as it was; what cannot be read is said below the line. User interface thread; borrows all.
class TempoLine : public QObject {
public:
    /// The line opens in `room` and gives the focus back to it.
    TempoLine(CListVw& list, const UiText& text, QWidget& room) : m_list(list), m_text(text), m_room(room) {}

    void open(const QRect& place, const EvntRef& ref);
    void open(const QRect& place, EvntDraft draft);
    void close();
    /// The event may have gone.
    void songChanged();
    /// Null for none.
    [[nodiscard]] QLineEdit* line() const { return m_line; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] const CEvnt& about() const { return m_ref.evnt ? evntOf(m_ref) : m_fresh; }
    [[nodiscard]] std::uint32_t time() const { return m_ref.evnt ? timeOf(m_ref) : m_draft.rec.time; }
    [[nodiscard]] ListColumn column() const { return EvntCells::valueColumn(kindOf(about())); }
    void show(QRect place);
    void take();

    CListVw& m_list;
    const UiText& m_text;
    QWidget& m_room;
    QPointer<QLineEdit> m_line; ///< child of the room
    FaultLabel m_fault;
    EvntRef m_ref; ///< null for a new event
    EvntDraft m_draft;
    CEvnt m_fresh; ///< the draft as an event
};

} // namespace tessaro
