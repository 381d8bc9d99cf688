// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/app_windows.h"
#include "core/ports/user.h"

#include <QString>

#include <functional>

class QWidget;

namespace tessaro {

class Icons;
class UiText;

/// Messages and questions of the program as boxes over the main window, and sentences in its status line. Before there
/// is a window the boxes stand alone.
class WindowUser : public UserPort {
public:
    /// Borrowed.
    WindowUser(const UiText& text, const Icons& icons);

    /// The window that owns the boxes; null for none.
    void setWindow(QWidget* window) { m_window = window; }
    /// Takes the sentences of `status`.
    std::function<void(const QString&)> onStatus;
    /// Show a box and wait for it. May be replaced, where nobody is there to answer.
    std::function<void(const QString&, MessageKind)> showBox;
    std::function<bool(const QString&)> askBox;
    std::function<SaveAnswer(const QString&)> saveBox;

    using UserPort::message;
    void message(int stringId, MessageKind kind) override;
    void sentence(std::string_view text, MessageKind kind) override;
    bool ask(int stringId) override;
    bool ask(std::string_view text) override;
    void status(std::string_view text) override;

private:
    const UiText& m_text;
    const Icons& m_icons;
    QWidget* m_window = nullptr;
};

} // namespace tessaro
