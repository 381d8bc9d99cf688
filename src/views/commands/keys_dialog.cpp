// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/commands/keys_dialog.h"

#include "views/commands/key_field.h"
#include "views/text/ui_text.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include <algorithm>

namespace tessaro {
namespace {

constexpr QSize usualSize(640, 680);
constexpr int rowHeight = 24;
constexpr int commandRole = Qt::UserRole; ///< the place of a command in the list

QString keyNames(const QList<QKeySequence>& keys)
{
    return QKeySequence::listToString(keys, QKeySequence::NativeText).replace(QLatin1String("; "), QLatin1String(", "));
}

void setBold(QTreeWidgetItem& item, int column, bool bold)
{
    QFont font = item.font(column);
    font.setBold(bold);
    item.setFont(column, font);
}

} // namespace

KeysDialog::KeysDialog(KeyMap& keys, const UiText& text, QWidget* parent) : QDialog(parent), m_keys(keys), m_text(text)
{
    layOut();
    connect(m_search, &QLineEdit::textChanged, this, [this] { filter(); });
    m_keySearch->onKey = [this] { filter(); };
    connect(m_table, &QTreeWidget::currentItemChanged, this, [this] { showChosen(); });
    m_newKey->onKey = [this] { showConflict(); };
    connect(m_add, &QPushButton::clicked, this, [this] { change(KeyMap::keys(*chosen()) << m_newKey->key()); });
    connect(m_takeOver, &QPushButton::clicked, this, [this] { change(KeyMap::keys(*chosen()) << m_newKey->key()); });
    connect(m_replace, &QPushButton::clicked, this, [this] { change({m_newKey->key()}); });
    connect(m_reset, &QPushButton::clicked, this, [this] {
        m_keys.reset(*chosen());
        showKeys();
    });
    connect(m_resetAll, &QPushButton::clicked, this, [this] {
        m_keys.resetAll();
        showKeys();
    });
    connect(m_close, &QPushButton::clicked, this, &QDialog::close);
    retranslate();
    resize(usualSize);
    m_search->setFocus();
}

void KeysDialog::layOut()
{
    m_search = new QLineEdit;
    m_search->setClearButtonEnabled(true);
    m_keySearch = new KeyField;
    m_keySearch->setClearButtonEnabled(true);
    m_table = new QTreeWidget;
    m_table->setColumnCount(2);
    m_table->setUniformRowHeights(true);
    m_table->setIndentation(12);
    m_table->setExpandsOnDoubleClick(false);
    m_resetAll = new QPushButton;
    m_close = new QPushButton;
    for (QPushButton* button : {m_resetAll, m_close}) button->setAutoDefault(false);

    auto* searches = new QHBoxLayout;
    searches->addWidget(m_search, 3);
    searches->addWidget(m_keySearch, 2);
    auto* ends = new QHBoxLayout;
    ends->addWidget(m_resetAll);
    ends->addStretch();
    ends->addWidget(m_close);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(12);
    layout->addLayout(searches);
    layout->addWidget(m_table, 1);
    layout->addWidget(makeEditor());
    layout->addLayout(ends);
}

QWidget* KeysDialog::makeEditor()
{
    auto* editor = new QWidget;
    m_name = new QLabel;
    m_newKey = new KeyField;
    m_add = new QPushButton;
    m_replace = new QPushButton;
    m_reset = new QPushButton;
    m_news = new QLabel;
    m_takeOver = new QPushButton;
    m_add->setDefault(true);
    for (QPushButton* button : {m_replace, m_reset, m_takeOver}) button->setAutoDefault(false);

    auto* top = new QHBoxLayout;
    m_chips = new QHBoxLayout;
    m_chips->setSpacing(4);
    top->addWidget(m_name);
    top->addLayout(m_chips);
    top->addStretch();
    top->addWidget(m_reset);
    auto* line = new QHBoxLayout;
    line->addWidget(m_newKey, 1);
    line->addWidget(m_add);
    line->addWidget(m_replace);
    auto* news = new QHBoxLayout;
    news->addWidget(m_news, 1);
    news->addWidget(m_takeOver);
    auto* layout = new QVBoxLayout(editor);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    for (QHBoxLayout* row : {top, line, news}) layout->addLayout(row);
    QSizePolicy stays = m_takeOver->sizePolicy(); // nothing jumps when it shows
    stays.setRetainSizeWhenHidden(true);
    m_takeOver->setSizePolicy(stays);
    m_reset->setSizePolicy(stays);
    return editor;
}

void KeysDialog::retranslate()
{
    setWindowTitle(m_text.plain(TextId::commandKeys));
    const auto hint = [this](QLineEdit& line, TextId text) {
        line.setPlaceholderText(m_text(text));
        line.setAccessibleName(m_text(text));
    };
    hint(*m_search, TextId::keysSearch);
    hint(*m_keySearch, TextId::keysFind);
    hint(*m_newKey, TextId::keysNew);
    m_table->setAccessibleName(m_text.plain(TextId::commandKeys));
    m_add->setText(m_text(TextId::keysAdd));
    m_replace->setText(m_text(TextId::keysReplace));
    m_reset->setText(m_text(TextId::keysReset));
    m_resetAll->setText(m_text(TextId::keysResetAll));
    m_takeOver->setText(m_text(TextId::keysTakeOver));
    m_close->setText(m_text(TextId::toolkitClose));
    m_table->setHeaderLabels({m_text(TextId::keysCommand), m_text(TextId::keysKeys)});
    fill();
}

void KeysDialog::fill()
{
    const Command* before = chosen();
    m_table->clear();
    m_rows.clear();
    std::map<TextId, QTreeWidgetItem*> groups;
    const auto& commands = m_keys.commands().all();
    for (std::size_t i = 0; i < commands.size(); ++i) {
        QTreeWidgetItem*& group = groups[commands[i].group];
        if (!group) {
            group = new QTreeWidgetItem(m_table, {m_text.plain(commands[i].group)});
            group->setFlags(Qt::ItemIsEnabled);
            group->setSizeHint(0, {0, rowHeight});
            setBold(*group, 0, true);
        }
        auto* row = new QTreeWidgetItem(group, {m_text.plain(commands[i].name)});
        row->setData(0, commandRole, static_cast<int>(i));
        row->setSizeHint(0, {0, rowHeight});
        m_rows[&commands[i]] = row;
    }
    m_table->expandAll();
    m_table->header()->setStretchLastSection(true);
    m_table->resizeColumnToContents(0);
    m_table->setColumnWidth(0, std::max(m_table->columnWidth(0), usualSize.width() / 2));
    showKeys();
    filter();
    if (before) choose(*before);
}

void KeysDialog::choose(const Command& command) { m_table->setCurrentItem(m_rows.at(&command)); }

const Command* KeysDialog::chosen() const
{
    const QTreeWidgetItem* item = m_table->currentItem();
    const QVariant place = item ? item->data(0, commandRole) : QVariant();
    return place.isValid() ? &m_keys.commands().all()[place.toUInt()] : nullptr;
}

bool KeysDialog::isSearching() const { return !m_search->text().isEmpty() || !m_keySearch->key().isEmpty(); }

bool KeysDialog::isSought(const Command& command) const
{
    const QString words = m_search->text();
    const QTreeWidgetItem& row = *m_rows.at(&command);
    const bool named =
        row.text(0).contains(words, Qt::CaseInsensitive) || row.text(1).contains(words, Qt::CaseInsensitive);
    const QKeySequence& key = m_keySearch->key();
    return named && (key.isEmpty() || KeyMap::keys(command).contains(key));
}

void KeysDialog::filter()
{
    QTreeWidgetItem* first = nullptr;
    for (const Command& command : m_keys.commands().all()) {
        QTreeWidgetItem* row = m_rows.at(&command);
        row->setHidden(!isSought(command));
        if (!first && !row->isHidden()) first = row;
    }
    for (int g = 0; g < m_table->topLevelItemCount(); ++g) {
        QTreeWidgetItem* group = m_table->topLevelItem(g);
        bool isEmpty = true;
        for (int i = 0; i < group->childCount(); ++i) isEmpty = isEmpty && group->child(i)->isHidden();
        group->setHidden(isEmpty);
    }
    if (isSearching()) m_table->setCurrentItem(first);
    showChosen();
}

/// In the rows, and in the line of the chosen command.
void KeysDialog::showKeys()
{
    for (const auto& [command, row] : m_rows) {
        row->setText(1, keyNames(KeyMap::keys(*command)));
        setBold(*row, 1, !KeyMap::isUsual(*command));
        row->setToolTip(1, KeyMap::isUsual(*command) ? QString() : m_text(TextId::keysChanged));
    }
    showChosen();
}

void KeysDialog::showChosen()
{
    while (const QLayoutItem* item = m_chips->takeAt(0)) {
        item->widget()->deleteLater();
        item->widget()->hide();
        delete item;
    }
    const Command* command = chosen();
    m_name->setText(command ? m_text.plain(command->name) : QString());
    m_newKey->setEnabled(command);
    m_reset->setVisible(command && !KeyMap::isUsual(*command));
    m_newKey->setKey({});
    for (const QKeySequence& key : command ? KeyMap::keys(*command) : QList<QKeySequence>()) {
        const QString name = key.toString(QKeySequence::NativeText);
        auto* chip = new QPushButton(name + QStringLiteral("  ×"));
        chip->setAutoDefault(false);
        chip->setToolTip(m_text(TextId::keysRemove).arg(name));
        chip->setAccessibleName(chip->toolTip());
        connect(chip, &QPushButton::clicked, this, [this, command, key] {
            QList<QKeySequence> left = KeyMap::keys(*command);
            left.removeAll(key);
            change(left);
        });
        m_chips->addWidget(chip);
    }
    showConflict();
}

void KeysDialog::showConflict()
{
    const Command* command = chosen();
    const QKeySequence& key = m_newKey->key();
    const Command* owner = key.isEmpty() ? nullptr : m_keys.owner(key);
    m_add->setEnabled(!key.isEmpty() && !owner);
    m_replace->setEnabled(!key.isEmpty() && !owner);
    m_takeOver->setVisible(owner && owner != command);
    const auto news = [&] {
        const bool nothing = !m_table->currentItem() && isSearching();
        if (!command) return m_text(nothing ? TextId::keysNothing : TextId::keysHint);
        if (!owner) return QString();
        return m_text(TextId::keysTaken).arg(key.toString(QKeySequence::NativeText), m_text.plain(owner->name));
    };
    m_news->setText(news());
}

void KeysDialog::change(const QList<QKeySequence>& keys)
{
    m_keys.setKeys(*chosen(), keys);
    showKeys();
}

} // namespace tessaro
