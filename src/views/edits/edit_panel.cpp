// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/edits/edit_panel.h"

#include "core/edit/editor.h"
#include "core/ports/settings_store.h"
#include "views/editors/view_parts.h"
#include "views/edits/plan_text.h"
#include "views/roll/note_text.h"
#include "views/setup/choice_box.h"
#include "views/text/ui_text.h"
#include "views/widgets/elided_label.h"
#include "views/widgets/keeps_key.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSpinBox>

#include <algorithm>
#include <utility>

namespace tessaro {
namespace {

constexpr int edge = 16;
constexpr int gap = 8;
constexpr int usualWidth = 320;
constexpr int margin = 48; ///< to the window below
constexpr const char* section = "User Settings";

using Kind = EditField::Kind;

/// A key of the keyboard by its name.
class KeyBox : public QSpinBox {
public:
    using QSpinBox::QSpinBox;

protected:
    [[nodiscard]] QString textFromValue(int key) const override { return keyName(key); }
    [[nodiscard]] int valueFromText(const QString& text) const override { return parseKey(text).value_or(value()); }
    QValidator::State validate(QString& text, int&) const override
    {
        return parseKey(text) ? QValidator::Acceptable : QValidator::Intermediate;
    }
};

ChoiceBox* asChoice(QWidget* field) { return dynamic_cast<ChoiceBox*>(field); }
QSpinBox* asNumber(QWidget* field) { return dynamic_cast<QSpinBox*>(field); }

QString trackText(const CTrk& trk, int number, const UiText& text)
{
    const QString name = songText(trk.GetName());
    return name.isEmpty() ? text(TextId::editTrackNumbered).arg(number)
                          : text(TextId::editTrackNamed).arg(number).arg(name);
}

ChoiceBox* makeChoice(const EditField& field, QWidget* parent)
{
    auto* box = new ChoiceBox(parent);
    for (const EditChoice& choice : field.choices) box->add({}, choice.value);
    if (field.kind == Kind::noteLength)
        for (int exponent = field.least; exponent <= field.most; ++exponent)
            box->add(QStringLiteral("1/%1").arg(1 << exponent), exponent);
    if (field.kind == Kind::tonic)
        for (int key = field.least; key <= field.most; ++key) box->add(keyName(key).remove(QStringLiteral("-1")), key);
    return box;
}

QSpinBox* makeNumber(const EditField& field, QWidget* parent)
{
    auto* box = field.kind == Kind::key ? new KeyBox(parent) : new QSpinBox(parent);
    box->setRange(field.least, field.most);
    box->setAccelerated(true);
    if (field.kind == Kind::percent) {
        box->setSuffix(QStringLiteral(" %"));
        box->setSingleStep(5);
    }
    return box;
}

} // namespace

EditPanel::EditPanel(const EditKind& kind, TextId title, const ViewParts& parts, QWidget* parent)
    : QDialog(parent)
    , m_kind(kind)
    , m_title(title)
    , m_parts(parts)
    , m_form(new QFormLayout)
    , m_preview(new ElidedLabel(this))
    , m_apply(new QPushButton(this))
    , m_close(new QPushButton(this))
{
    m_form->setHorizontalSpacing(edge);
    m_form->setVerticalSpacing(gap);
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    addFields();
    m_apply->setDefault(true);
    m_close->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(gap);
    buttons->addStretch();
    buttons->addWidget(m_apply);
    buttons->addWidget(m_close);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(edge, edge, edge, edge);
    layout->setSpacing(edge);
    layout->setSizeConstraint(QLayout::SetFixedSize); // as tall as the fields of the chosen method
    layout->addLayout(m_form);
    layout->addWidget(m_preview);
    layout->addLayout(buttons);
    m_preview->setMinimumWidth(usualWidth);

    connect(m_apply, &QPushButton::clicked, this, [this] { onApply(); });
    connect(m_close, &QPushButton::clicked, this, &QDialog::close);
    connect(&m_stale, &QTimer::timeout, this, [this] { showPlan(); });
    m_stale.setSingleShot(true);
    m_seed = QRandomGenerator::global()->generate();
    retranslate();
}

void EditPanel::addFields()
{
    for (const EditField& field : m_kind.fields) {
        const bool isChoice = field.kind == Kind::choice || field.kind == Kind::noteLength || field.kind == Kind::tonic
                           || field.kind == Kind::track;
        const int before = m_parts.store.getInt(section, field.name, field.usual);
        const auto changed = [this] {
            showFields();
            refresh();
        };
        QWidget* editor = nullptr;
        if (isChoice) {
            ChoiceBox* box = makeChoice(field, this);
            box->choose(box->findData(before) >= 0 ? before : field.usual);
            connect(box, &QComboBox::currentIndexChanged, this, changed);
            editor = box;
        } else {
            QSpinBox* box = makeNumber(field, this);
            box->setValue(before);
            for (QObject* taker : {static_cast<QObject*>(box), static_cast<QObject*>(box->findChild<QLineEdit*>())})
                taker->installEventFilter(this);
            connect(box, &QSpinBox::valueChanged, this, changed);
            editor = box;
        }
        auto* label = new QLabel(this);
        label->setBuddy(editor);
        m_form->addRow(label, editor);
        m_fields.push_back(editor);
    }
    fillTracks();
    showFields();
}

/// Tracks come, go and change their names; where the chosen one is gone, it is the first.
void EditPanel::fillTracks()
{
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        if (m_kind.fields[i].kind != Kind::track) continue;
        ChoiceBox* box = asChoice(m_fields[i]);
        const int chosen = box->chosen(m_parts.store.getInt(section, m_kind.fields[i].name, m_kind.fields[i].usual));
        const QSignalBlocker quiet(box);
        box->clear();
        for (int number = 1; number < trackCount; ++number) {
            const CTrk& trk = *m_parts.editor.song().trk(number);
            if (trk.GetType() != trktype::wave) box->add(trackText(trk, number, m_parts.text), number);
        }
        box->setCurrentIndex(std::max(box->findData(chosen), 0));
    }
}

/// Those that count with the chosen method.
void EditPanel::showFields()
{
    const int mode = m_fields.empty() ? 0 : value(0);
    for (std::size_t i = 1; i < m_fields.size(); ++i) {
        const unsigned modes = m_kind.fields[i].modes;
        const bool counts = modes == EditField::always || (modes >> mode & 1U) != 0;
        m_form->labelForField(m_fields[i])->setVisible(counts);
        m_fields[i]->setVisible(counts);
    }
}

int EditPanel::value(std::size_t number) const
{
    if (const ChoiceBox* box = asChoice(m_fields[number])) return box->chosen(m_kind.fields[number].usual);
    return asNumber(m_fields[number])->value();
}

QString EditPanel::preview() const { return m_preview->text(); }

EditPlan EditPanel::plan(std::span<const EvntRef> selected) const
{
    std::vector<int> values;
    for (std::size_t i = 0; i < m_fields.size(); ++i) values.push_back(value(i));
    return m_kind.plan({m_parts, selected, values, m_seed});
}

void EditPanel::used()
{
    for (std::size_t i = 0; i < m_fields.size(); ++i) m_parts.store.setInt(section, m_kind.fields[i].name, value(i));
    m_seed = QRandomGenerator::global()->generate();
    refresh();
}

void EditPanel::refresh()
{
    if (isVisible() && !m_stale.isActive()) m_stale.start(0);
}

void EditPanel::showPlan()
{
    fillTracks();
    const std::vector<EvntRef> selected = selection();
    const EditPlan found = plan(selected);
    m_preview->setText(planText(found, selected.size(), m_parts.text));
    m_apply->setEnabled(found.count() > 0);
}

void EditPanel::retranslate()
{
    const UiText& text = m_parts.text;
    setWindowTitle(text.plain(m_title));
    m_apply->setText(text(TextId::editApply));
    m_close->setText(text(TextId::editClose));
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const EditField& field = m_kind.fields[i];
        static_cast<QLabel*>(m_form->labelForField(m_fields[i]))->setText(text(field.label));
        m_fields[i]->setAccessibleName(text.plain(field.label));
        for (std::size_t row = 0; row < field.choices.size(); ++row)
            asChoice(m_fields[i])->setItemText(static_cast<int>(row), text(field.choices[row].text));
        if (field.kind == Kind::ticks) asNumber(m_fields[i])->setSuffix(text(TextId::editTickSuffix));
    }
    refresh();
}

/// Keys without Ctrl and Alt belong to the panel while it has the focus.
bool EditPanel::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate) refresh();
    return keepsKey(event) || QDialog::event(event);
}

/// Undo and redo are those of the song, also while a number has the focus.
bool EditPanel::eventFilter(QObject* box, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride) return QDialog::eventFilter(box, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (!key->matches(QKeySequence::Undo) && !key->matches(QKeySequence::Redo)) return false;
    event->ignore();
    return true;
}

void EditPanel::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!std::exchange(m_placed, true)) { // beside what is edited rather than over it
        const QWidget& over = *parentWidget();
        move(over.mapToGlobal(QPoint(std::max(over.width() - width() - margin, 0), 2 * margin)));
    }
    showPlan();
    if (!m_fields.empty()) m_fields.front()->setFocus();
}

} // namespace tessaro
