// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/theme/theme.h"

#include "views/theme/colours.h"
#include "views/theme/flat_style.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QFontInfo>

namespace tessaro {

Theme::Theme() : m_desktopFont(QApplication::font())
{
    QApplication::setStyle(new FlatStyle); // the application owns it
    qApp->installEventFilter(this);
    apply();
}

void Theme::setAppearance(Appearance appearance)
{
    m_appearance = appearance;
    apply();
}

void Theme::setJapanese(bool japanese)
{
    QFont font = m_desktopFont;
    const QString other = QStringLiteral("VL PGothic");
    const auto has = [](const QString& family) {
        return QFontDatabase::writingSystems(family).contains(QFontDatabase::Japanese);
    };
    if (japanese && !has(QFontInfo(font).family()) && has(other)) font.setFamilies({other, m_desktopFont.family()});
    QApplication::setFont(font);
}

bool Theme::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ThemeChange && !m_applying && m_appearance == Appearance::desktop) apply();
    return QObject::eventFilter(watched, event);
}

void Theme::apply()
{
    m_applying = true;
    bool dark = m_appearance == Appearance::dark;
    if (m_appearance == Appearance::desktop) {
        QApplication::setPalette(QPalette()); // brings the desktop's own palette back
        dark = isDark(QApplication::palette());
    }
    QApplication::setPalette(dark ? darkPalette() : lightPalette());
    m_applying = false;
}

} // namespace tessaro
