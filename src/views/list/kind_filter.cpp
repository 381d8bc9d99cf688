// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/kind_filter.h"

#include "views/text/ui_text.h"

#include <QKeyEvent>
#include <QMenu>

#include <algorithm>

namespace tessaro {
namespace {

/// Checks change without closing it.
class StayingMenu : public QMenu {
public:
    using QMenu::QMenu;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        if (!trigger()) QMenu::mouseReleaseEvent(event);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        const int key = event->key();
        const bool isChoice = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
        if (!isChoice || !trigger()) QMenu::keyPressEvent(event);
    }

private:
    bool trigger()
    {
        QAction* at = activeAction();
        if (!at || !at->isCheckable()) return false;
        at->trigger();
        return true;
    }
};

constexpr std::uint32_t bitOf(KindGroup group) { return 1U << static_cast<unsigned>(group); }

} // namespace

KindFilter::KindFilter(const UiText& text, QWidget* parent)
    : QPushButton(parent)
    , m_text(text)
    , m_menu(new StayingMenu(this))
{
    setMenu(m_menu);
}

void KindFilter::show(const std::vector<KindGroup>& groups, std::uint32_t hidden)
{
    m_groups = groups;
    m_hidden = hidden;
    m_menu->clear();
    for (const KindGroup group : groups) {
        QAction* action = m_menu->addAction(m_text(groupName(group)));
        action->setCheckable(true);
        action->setChecked(!(hidden & bitOf(group)));
        connect(action, &QAction::toggled, this,
                [this, group](bool on) { choose(on ? m_hidden & ~bitOf(group) : m_hidden | bitOf(group)); });
    }
    m_menu->addSeparator();
    connect(m_menu->addAction(m_text(TextId::listShowAll)), &QAction::triggered, this, [this] {
        choose(0);
        show(m_groups, m_hidden);
    });
    showFace();
    setToolTip(m_text(TextId::listShowTip));
    setAccessibleName(m_text.plain(TextId::listShow));
}

void KindFilter::choose(std::uint32_t hidden)
{
    m_hidden = hidden;
    if (onChosen) onChosen(hidden);
    showFace();
}

void KindFilter::showFace()
{
    const auto shown =
        std::count_if(m_groups.begin(), m_groups.end(), [this](KindGroup group) { return !(m_hidden & bitOf(group)); });
    const auto all = static_cast<std::ptrdiff_t>(m_groups.size());
    setText(shown == all ? m_text(TextId::listShow) : m_text(TextId::listShowSome).arg(shown).arg(all));
}

} // namespace tessaro
