// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/window_user.h"

#include "views/text/ui_text.h"

#include <QMessageBox>

namespace tessaro {

WindowUser::WindowUser(const UiText& text) : m_text(text)
{
    showBox = [this](const QString& line, MessageKind kind) {
        const QMessageBox::Icon icon = kind == MessageKind::error ? QMessageBox::Critical
            : kind == MessageKind::warning                        ? QMessageBox::Warning
                                                                  : QMessageBox::Information;
        QMessageBox(icon, QStringLiteral("Tessaro"), line, QMessageBox::Ok, m_window).exec();
    };
    askBox = [this](const QString& line) {
        return QMessageBox::question(m_window, QStringLiteral("Tessaro"), line) == QMessageBox::Yes;
    };
}

void WindowUser::message(int stringId, MessageKind kind) { showBox(m_text(static_cast<TextId>(stringId)), kind); }
void WindowUser::sentence(std::string_view text, MessageKind kind) { showBox(utf8Text(text), kind); }
bool WindowUser::ask(int stringId) { return askBox(m_text(static_cast<TextId>(stringId))); }
bool WindowUser::ask(std::string_view text) { return askBox(utf8Text(text)); }

void WindowUser::status(std::string_view text)
{
    if (onStatus) onStatus(utf8Text(text));
}

} // namespace tessaro
