// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/detection_dialog.h"

#include "views/text/ui_text.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace tessaro {
namespace {

constexpr int edge = 16;
constexpr QSize usualSize(560, 320);

} // namespace

DetectionDialog::DetectionDialog(ModuleDetection& detection, const UiText& text, QWidget* parent)
    : QDialog(parent)
    , m_detection(detection)
    , m_text(text)
    , m_says(new QLabel(text(TextId::detectRunning), this))
    , m_rows(new QTreeWidget(this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(text(TextId::detectTitle));
    m_says->setWordWrap(true);
    m_rows->setHeaderLabels({text(TextId::detectOutput), text(TextId::detectInput), text(TextId::detectModule)});
    m_rows->setAccessibleName(text(TextId::detectTitle));
    m_rows->setRootIsDecorated(false);
    m_rows->setUniformRowHeights(true);
    m_rows->setAllColumnsShowFocus(true);
    m_rows->header()->setSectionsMovable(false);
    m_rows->header()->setStretchLastSection(false);
    m_rows->header()->setSectionResizeMode(QHeaderView::Stretch);
    m_rows->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(false);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(edge, edge, edge, edge);
    layout->setSpacing(12);
    layout->addWidget(m_says);
    layout->addWidget(m_rows);
    layout->addWidget(m_buttons);
    resize(usualSize);

    m_timer.setInterval(ModuleDetection::timerMs);
    connect(&m_timer, &QTimer::timeout, this, [this] { m_detection.timer(); });
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_detection.setObserver(this);
}

DetectionDialog::~DetectionDialog()
{
    m_detection.setObserver(nullptr);
    m_detection.cancel();
}

void DetectionDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (event->spontaneous()) return;
    m_timer.start();
    QTimer::singleShot(0, this, [this] { m_detection.start(); }); // the first question takes a while, too
}

void DetectionDialog::rowFound(const ModuleRow& row)
{
    auto* item = new QTreeWidgetItem(m_rows, {songText(row.output), songText(row.input), songText(row.module)});
    item->setSizeHint(0, {0, fontMetrics().height() + 8});
    m_rows->scrollToItem(item);
}

void DetectionDialog::ended()
{
    m_timer.stop();
    const std::size_t modules = m_detection.found().size();
    m_says->setText(m_text(TextId::detectFound).arg(modules) + QLatin1Char(' ')
                    + (modules > 0 ? m_text(TextId::detectFoundSays) : QString()));
    QPushButton* ok = m_buttons->button(QDialogButtonBox::Ok);
    ok->setEnabled(true);
    ok->setFocus();
}

void DetectionDialog::done(int result)
{
    m_detection.cancel();
    QDialog::done(result);
}

} // namespace tessaro
