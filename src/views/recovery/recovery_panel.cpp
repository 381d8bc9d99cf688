// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/recovery/recovery_panel.h"

#include "core/doc/recovery.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/transport/location_text.h"

#include <QDateTime>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPushButton>
#include <QTreeWidget>

namespace tessaro {
namespace {

constexpr int mostRows = 4; ///< that are seen at once
constexpr int edge = 12;
constexpr int iconSize = 24;

} // namespace

RecoveryLine recoveryLine(const RecoverableSong& song, const UiText& text)
{
    const QLocale locale(text.language() == Language::japanese ? QLocale::Japanese : QLocale::English);
    const auto since = std::chrono::duration_cast<std::chrono::milliseconds>(song.record.time.time_since_epoch());
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(since.count());
    const QString name = utf8Text(song.name());
    return {name.isEmpty() ? text(TextId::songUntitled) : name, locale.toString(time, QLocale::ShortFormat),
            song.hasRecord ? utf8Text(clockText(song.record.milliseconds)) : QStringLiteral("–"), !song.take.empty()};
}

RecoveryPanel::RecoveryPanel(const Icons& icons, const UiText& text, QWidget* parent)
    : QWidget(parent)
    , m_icons(icons)
    , m_text(text)
    , m_picture(new QLabel(this))
    , m_sentence(new QLabel(this))
    , m_list(new QTreeWidget(this))
    , m_open(new QPushButton(this))
    , m_discard(new QPushButton(this))
    , m_later(new QPushButton(this))
{
    m_list->setColumnCount(3);
    m_list->setHeaderHidden(true);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    setFocusProxy(m_list);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(edge, edge, edge, edge + 1);
    layout->setHorizontalSpacing(8);
    layout->setVerticalSpacing(8);
    layout->addWidget(m_picture, 0, 0);
    layout->addWidget(m_sentence, 0, 1);
    layout->addWidget(m_list, 1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    for (QPushButton* button : {m_open, m_discard, m_later}) {
        button->setAutoDefault(true); // Enter presses it
        buttons->addWidget(button);
    }
    layout->addLayout(buttons, 1, 2, Qt::AlignTop);
    layout->setColumnStretch(1, 1);

    connect(m_list, &QTreeWidget::itemActivated, this, [this] { withChosen(onOpen); });
    connect(m_open, &QPushButton::clicked, this, [this] { withChosen(onOpen); });
    connect(m_discard, &QPushButton::clicked, this, [this] { withChosen(onDiscard); });
    connect(m_later, &QPushButton::clicked, this, [this] { onLater(); });
    drawIcon();
    retranslate();
    hide();
}

void RecoveryPanel::setSongs(const std::vector<RecoverableSong>& songs)
{
    const int chosen = std::max(m_list->indexOfTopLevelItem(m_list->currentItem()), 0);
    m_list->clear();
    for (const RecoverableSong& song : songs) {
        const RecoveryLine line = recoveryLine(song, m_text);
        auto* item = new QTreeWidgetItem(m_list);
        item->setText(0, line.name);
        QString made = m_text(TextId::recoveryTime).arg(line.time);
        if (line.take) made += QStringLiteral(", ") + m_text(TextId::recoveryTake);
        item->setText(1, made);
        item->setText(2, m_text(TextId::recoveryLength).arg(line.length));
        item->setToolTip(0, songText(song.record.path));
        for (int column = 0; column < m_list->columnCount(); ++column)
            item->setSizeHint(column, {fontMetrics().horizontalAdvance(item->text(column)) + 24, rowHeight()});
    }
    const int last = m_list->topLevelItemCount() - 1;
    if (last >= 0) m_list->setCurrentItem(m_list->topLevelItem(std::min(chosen, last)));
    fitHeight();
    setVisible(last >= 0);
}

void RecoveryPanel::retranslate()
{
    m_sentence->setText(m_text(TextId::recoverySentence));
    m_list->setAccessibleName(m_text(TextId::recoveryList));
    m_open->setText(m_text(TextId::recoveryOpen));
    m_discard->setText(m_text(TextId::recoveryDiscard));
    m_later->setText(m_text(TextId::recoveryLater));
    fitHeight();
}

void RecoveryPanel::fitHeight()
{
    const int rows = std::clamp(m_list->topLevelItemCount(), 1, mostRows);
    m_list->setFixedHeight(rows * rowHeight());
    for (QPushButton* button : {m_open, m_discard, m_later}) button->setFixedHeight(rowHeight());
}

int RecoveryPanel::rowHeight() const { return fontMetrics().height() + 12; }

void RecoveryPanel::withChosen(const std::function<void(std::size_t)>& act) const
{
    if (const int index = m_list->indexOfTopLevelItem(m_list->currentItem()); index >= 0)
        act(static_cast<std::size_t>(index));
}

/// Keys of the panel that are commands of the window elsewhere.
bool RecoveryPanel::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape || key == Qt::Key_Space || key == Qt::Key_Home) {
            event->accept();
            return true;
        }
    }
    return QWidget::event(event);
}

void RecoveryPanel::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape: onLater(); return;
    case Qt::Key_Delete: withChosen(onDiscard); return;
    default: QWidget::keyPressEvent(event);
    }
}

void RecoveryPanel::drawIcon()
{
    const QIcon icon = m_icons.icon(QStringLiteral("warning"));
    m_picture->setPixmap(icon.pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
}

void RecoveryPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) drawIcon();
    if (event->type() == QEvent::FontChange) fitHeight();
}

void RecoveryPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    painter.fillRect(0, height() - 1, width(), 1, palette().mid());
}

} // namespace tessaro
