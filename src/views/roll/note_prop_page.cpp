// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/note_prop_page.h"

#include "core/edit/editor.h"
#include "views/roll/note_commands.h"
#include "views/roll/note_text.h"
#include "views/setup/position_scale.h"
#include "views/text/ui_text.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>

namespace tessaro {
namespace {

constexpr TextId names[CPnoNotePropPage::fields] = {TextId::noteTime, TextId::noteLength, TextId::noteKey,
                                                    TextId::noteVelocity};

} // namespace

CPnoNotePropPage::CPnoNotePropPage(const ViewParts& parts, NoteCommands& commands, Notes notes, QWidget* parent)
    : QWidget(parent, Qt::Tool)
    , m_parts(parts)
    , m_commands(commands)
    , m_notes(std::move(notes))
    , m_head(new QLabel(this))
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(16, 12, 16, 16);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    m_head->setForegroundRole(QPalette::PlaceholderText);
    grid->addWidget(m_head, 0, 0, 1, 2);
    for (std::size_t i = 0; i < fields; ++i) {
        m_labels[i] = new QLabel(this);
        m_lines[i] = new QLineEdit(this);
        m_lines[i]->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000:00:0000")) + 24);
        m_labels[i]->setBuddy(m_lines[i]);
        const int row = static_cast<int>(i) + 1;
        grid->addWidget(m_labels[i], row, 0);
        grid->addWidget(m_lines[i], row, 1);
        connect(m_lines[i], &QLineEdit::editingFinished, this, [this, i] { take(static_cast<Field>(i)); });
    }
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(static_cast<int>(fields) + 1, 1);
    retranslate();
}

CPnoNotePropPage::~CPnoNotePropPage()
{
    for (QLineEdit* line : m_lines) line->disconnect(this); // a line that loses the focus now has nothing to tell
}

void CPnoNotePropPage::retranslate()
{
    setWindowTitle(m_parts.text(TextId::noteProperties));
    for (std::size_t i = 0; i < fields; ++i) {
        m_labels[i]->setText(m_parts.text(names[i]));
        m_lines[i]->setAccessibleName(m_parts.text.plain(names[i]));
    }
    refresh();
}

void CPnoNotePropPage::refresh()
{
    if (!isVisible()) return;
    const std::vector<EvntRef> notes = m_notes();
    m_head->setText(m_parts.text(TextId::notesSelected).arg(notes.size()));
    for (std::size_t i = 0; i < fields; ++i) showField(static_cast<Field>(i), notes);
}

void CPnoNotePropPage::showEvent(QShowEvent*) { refresh(); }

std::uint32_t CPnoNotePropPage::valueOf(Field field, const EvntRef& note)
{
    const CEvnt& event = evntOf(note);
    switch (field) {
    case Field::time: return timeOf(note);
    case Field::length: return event.GetGateTime();
    case Field::key: return event.GetPost1();
    case Field::velocity: return event.GetPost2();
    }
    return 0;
}

QString CPnoNotePropPage::textOf(Field field, const _EDT_EVNT& note) const
{
    switch (field) {
    case Field::time: return placeText(m_parts.editor, note.time);
    case Field::length: return lengthText(note.gateTime, beatClockAt(m_parts.editor, note.time));
    case Field::key: return keyName(note.post1);
    case Field::velocity: return QString::number(note.post2);
    }
    return {};
}

bool CPnoNotePropPage::write(Field field, const QString& text, _EDT_EVNT& note) const
{
    const auto put = [](const auto& value, auto& place) {
        if (value) place = static_cast<std::remove_reference_t<decltype(place)>>(*value);
        return value.has_value();
    };
    switch (field) {
    case Field::time: return put(PositionScale(&m_parts.editor).parse(text.toStdString()), note.time);
    case Field::length: return put(parseLength(text, beatClockAt(m_parts.editor, note.time)), note.gateTime);
    case Field::key: return put(parseKey(text), note.post1);
    case Field::velocity: {
        const std::optional<int> value = parseValue(text);
        return value != 0 && put(value, note.post2); // a note of velocity 0 would be none
    }
    }
    return false;
}

void CPnoNotePropPage::showField(Field field, std::span<const EvntRef> notes)
{
    QLineEdit& line = this->field(field);
    const QSignalBlocker quiet(line);
    line.setEnabled(!notes.empty());
    const bool isCommon = std::ranges::all_of(
        notes, [&](const EvntRef& note) { return valueOf(field, note) == valueOf(field, notes.front()); });
    line.setText(isCommon && !notes.empty() ? textOf(field, NoteCommands::record(notes.front())) : QString());
    line.setPlaceholderText(isCommon ? QString() : m_parts.text(TextId::noteSeveral));
    line.setModified(false);
}

void CPnoNotePropPage::take(Field field)
{
    QLineEdit& line = this->field(field);
    if (!line.isModified() || m_parts.editor.IsPrgDlg()) return; // a song that comes in has no notes yet
    line.setModified(false);
    if (!line.text().isEmpty() && !m_parts.isLocked()) change(field, line.text());
    refresh();
}

void CPnoNotePropPage::change(Field field, const QString& text)
{
    const std::vector<EvntRef> notes = m_notes();
    if (notes.empty()) return;
    _EDT_EVNT first = NoteCommands::record(notes.front());
    if (!write(field, text, first)) return;
    const auto become = [&](const _EDT_EVNT& note) {
        _EDT_EVNT fresh = note;
        return write(field, text, fresh) ? fresh : note;
    };
    m_commands.edit(notes, become, TextId::undoEventChange);
}

void CPnoNotePropPage::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace tessaro
