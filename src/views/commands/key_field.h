// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequence>
#include <QLineEdit>

#include <functional>

namespace tessaro {

/// A line that takes a key with its modifiers in place of letters. Tab leaves it, Backspace and Escape empty it, and
/// Enter goes to the window.
class KeyField : public QLineEdit {
public:
    explicit KeyField(QWidget* parent = nullptr);

    /// The key has changed.
    std::function<void()> onKey;

    [[nodiscard]] const QKeySequence& key() const { return m_key; }
    void setKey(const QKeySequence& key);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QKeySequence m_key;
};

} // namespace tessaro
