// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/child_dock.h"

#include "views/widgets/elided_label.h"
#include "views/widgets/tool_button.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>

namespace tessaro {

void focusInto(QWidget& window)
{
    QWidget* first = window.focusProxy();
    if (!first) {
        const QList<QWidget*> inside = window.findChildren<QWidget*>();
        const auto takes = [](const QWidget* w) { return w->isEnabled() && w->focusPolicy() & Qt::ClickFocus; };
        const auto found = std::find_if(inside.begin(), inside.end(), takes);
        first = found == inside.end() ? &window : *found;
    }
    window.activateWindow();
    first->setFocus(Qt::ShortcutFocusReason);
}

class ChildDock::Title : public QWidget {
public:
    explicit Title(ChildDock& dock) : QWidget(&dock), m_dock(dock), m_label(new ElidedLabel)
    {
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(12, 2, 4, 0);
        layout->setSpacing(0);
        layout->addWidget(m_label, 1);
    }

    /// A button that looks like the command, and does the same with this dock.
    void addButton(const Icons& icons, const char* icon, const QAction* command, QAction& action)
    {
        if (!command) return;
        const auto follow = [command, &action] {
            action.setText(command->iconText());
            action.setShortcuts(command->shortcuts()); // for the tip: no widget has the action
        };
        connect(command, &QAction::changed, this, follow);
        follow();
        auto* button = new ToolButton(icons, QString::fromLatin1(icon), action);
        button->setSize({24, 22}, 12);
        layout()->addWidget(button);
    }

    void setText(const QString& text) { m_label->setText(text); }
    void setActive(bool active)
    {
        m_active = active;
        m_label->setRole(active ? QPalette::WindowText : QPalette::PlaceholderText);
        update();
    }

    [[nodiscard]] QSize minimumSizeHint() const override { return {80, 26}; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const QPalette& roles = palette();
        painter.fillRect(rect(), roles.window());
        painter.fillRect(0, 0, width(), m_active ? 2 : 1, m_active ? roles.highlight() : roles.mid());
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        m_dock.takeFocus();
        event->ignore(); // the dock is dragged by it
    }

private:
    ChildDock& m_dock;
    ElidedLabel* m_label;
    bool m_active = false;
};

ChildDock::ChildDock(const QString& name, QWidget* content, const Icons& icons, const Commands& commands)
    : m_title(new Title(*this))
{
    setObjectName(name);
    setWidget(content);
    setTitleBarWidget(m_title);
    connect(&m_float, &QAction::triggered, this, [this] { setFloating(!isFloating()); });
    connect(&m_maximise, &QAction::triggered, this, [this] {
        if (onMaximise) onMaximise();
    });
    connect(&m_close, &QAction::triggered, this, [this] { close(); });
    m_title->addButton(icons, "float", commands.floating, m_float);
    m_title->addButton(icons, "maximise", commands.maximise, m_maximise);
    m_title->addButton(icons, "close", commands.close, m_close);
}

void ChildDock::setTitle(const QString& title)
{
    setWindowTitle(title);
    m_title->setText(title);
}

void ChildDock::setActive(bool active) { m_title->setActive(active); }

void ChildDock::takeFocus()
{
    if (m_lastFocus && m_lastFocus->isVisibleTo(this)) {
        activateWindow();
        m_lastFocus->setFocus(Qt::ShortcutFocusReason);
    } else {
        focusInto(*widget());
    }
}

void ChildDock::closeEvent(QCloseEvent* event)
{
    QDockWidget::closeEvent(event);
    if (onClosed) onClosed();
}

} // namespace tessaro
