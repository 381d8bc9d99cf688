// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/window_user.h"

#include "views/text/ui_text.h"
#include "views/theme/icons.h"

#include <QMessageBox>

namespace tessaro {

WindowUser::WindowUser(const UiText& text, const Icons& icons) : m_text(text), m_icons(icons)
{
    const auto makeBox = [this](const QString& line, QMessageBox::StandardButtons buttons) {
        auto box =
            std::make_unique<QMessageBox>(QMessageBox::NoIcon, QStringLiteral("Tessaro"), line, buttons, m_window);
        box->setIconPixmap(m_icons.icon(QStringLiteral("warning")).pixmap(QSize(32, 32), box->devicePixelRatioF()));
        return box;
    };
    showBox = [makeBox](const QString& line, MessageKind) { makeBox(line, QMessageBox::Ok)->exec(); };
    askBox = [makeBox](const QString& line) {
        return makeBox(line, QMessageBox::Yes | QMessageBox::No)->exec() == QMessageBox::Yes;
    };
    saveBox = [makeBox](const QString& line) {
        const auto box = makeBox(line, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        box->setDefaultButton(QMessageBox::Yes);
        box->setEscapeButton(QMessageBox::Cancel);
        switch (box->exec()) {
        case QMessageBox::Yes: return SaveAnswer::save;
        case QMessageBox::No: return SaveAnswer::discard;
        default: return SaveAnswer::cancel;
        }
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
