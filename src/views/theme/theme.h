// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QObject>

namespace tessaro {

enum class Appearance { desktop, light, dark };

/// Dresses the application: style, palette, and the change between light and dark. With `desktop` it takes the set
/// that the desktop's own palette is nearer to, and follows when the desktop changes.
class Theme : public QObject {
public:
    Theme();
    void setAppearance(Appearance appearance);
    /// Takes care that the texts of the windows have a font of their own script: where the desktop's font has no
    /// Japanese, another one serves for it, rather than letters of two fonts side by side.
    void setJapanese(bool japanese);
    [[nodiscard]] Appearance appearance() const { return m_appearance; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();

    QFont m_desktopFont;
    Appearance m_appearance = Appearance::desktop;
    bool m_applying = false;
};

} // namespace tessaro
