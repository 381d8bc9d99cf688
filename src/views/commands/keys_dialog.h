// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/commands/key_map.h"

#include <QDialog>

#include <map>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace tessaro {

class KeyField;
class UiText;

/// The table of all commands and their keys, to look up by name or by pressing a key, and to change. A key that
/// another command has is given away only after its name was told.
class KeysDialog : public QDialog {
public:
    /// Keys and texts outlive the dialog.
    KeysDialog(KeyMap& keys, const UiText& text, QWidget* parent);

    void retranslate();
    /// Makes a command the chosen one.
    void choose(const Command& command);

    [[nodiscard]] QTreeWidget& table() const { return *m_table; }
    [[nodiscard]] QLineEdit& search() const { return *m_search; }
    [[nodiscard]] KeyField& keySearch() const { return *m_keySearch; }
    [[nodiscard]] KeyField& newKey() const { return *m_newKey; }
    [[nodiscard]] QPushButton& addButton() const { return *m_add; }
    [[nodiscard]] QPushButton& replaceButton() const { return *m_replace; }
    [[nodiscard]] QPushButton& takeOverButton() const { return *m_takeOver; }
    [[nodiscard]] const QLabel& news() const { return *m_news; }

private:
    void layOut();
    [[nodiscard]] QWidget* makeEditor();
    void fill();
    void filter();
    void showKeys();
    void showChosen();
    void showConflict();
    void change(const QList<QKeySequence>& keys);
    [[nodiscard]] bool isSearching() const;
    [[nodiscard]] bool isSought(const Command& command) const;
    [[nodiscard]] const Command* chosen() const;

    KeyMap& m_keys;
    const UiText& m_text;
    std::map<const Command*, QTreeWidgetItem*> m_rows;
    // Children of the dialog.
    QLineEdit* m_search;
    KeyField* m_keySearch;
    QTreeWidget* m_table;
    QLabel* m_name;
    QHBoxLayout* m_chips; ///< a button for each key of the chosen command
    KeyField* m_newKey;
    QPushButton* m_add;
    QPushButton* m_replace;
    QPushButton* m_reset;
    QLabel* m_news;
    QPushButton* m_takeOver;
    QPushButton* m_resetAll;
    QPushButton* m_close;
};

} // namespace tessaro
