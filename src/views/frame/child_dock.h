// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QDockWidget>
#include <QPointer>

#include <functional>

namespace tessaro {

class ElidedLabel;
class Icons;

/// A child window of the main one with its title: dragged by it to another place, onto another window as a tab, or out
/// of the main window. Buttons in the title float, enlarge and close it.
class ChildDock : public QDockWidget {
public:
    /// The commands whose names and keys the buttons tell; null for no such button.
    struct Commands {
        const QAction* floating;
        const QAction* maximise;
        const QAction* close;
    };

    /// Takes the content over; icons outlive the dock.
    ChildDock(const QString& name, QWidget* content, const Icons& icons, const Commands& commands);

    /// The person closes it, by whatever way; it is hidden by then.
    std::function<void()> onClosed;
    std::function<void()> onMaximise;

    void setTitle(const QString& title);
    /// The window that commands go to stands out.
    void setActive(bool active);
    /// The keys go to the part of the content that had them last.
    void takeFocus();
    /// A widget inside has got the keys.
    void noteFocus(QWidget* widget) { m_lastFocus = widget; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    class Title;

    QAction m_float;
    QAction m_maximise;
    QAction m_close;
    Title* m_title; ///< child of the dock
    QPointer<QWidget> m_lastFocus;
};

/// Gives the keys to a window: to what in it is to have them first.
void focusInto(QWidget& window);

} // namespace tessaro
