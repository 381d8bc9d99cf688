// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/theme/flat_style.h"

#include "views/theme/colours.h"
#include "views/theme/flat_inputs.h"

#include <QPainter>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>

namespace tessaro {
namespace {

// Between the frame of an input and its text, beyond what the base style leaves: it stands at the same place in all.
constexpr int lineInset = 6;
constexpr int boxInset = 4;

void drawScrollBar(const QProxyStyle& style, const QStyleOptionSlider& bar, QPainter& painter, const QWidget* widget)
{
    const QPalette& colours = bar.palette;
    painter.fillRect(bar.rect, colours.base());
    if (bar.maximum <= bar.minimum) return;
    QRect thumb = style.subControlRect(QStyle::CC_ScrollBar, &bar, QStyle::SC_ScrollBarSlider, widget);
    thumb.adjust(3, 3, -3, -3);
    const bool held = bar.state & QStyle::State_Sunken;
    const bool hovered = bar.state & QStyle::State_MouseOver;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(blend(colours.color(QPalette::Text), colours.color(QPalette::Base),
                           held      ? 0.5
                           : hovered ? 0.4
                                     : 0.25));
    const double round = std::min(thumb.width(), thumb.height()) / 2.0;
    painter.drawRoundedRect(thumb, round, round);
}

void drawHeaderSection(const QStyleOption& section, QPainter& painter)
{
    painter.fillRect(section.rect, section.palette.window());
    painter.fillRect(section.rect.left(), section.rect.bottom(), section.rect.width(), 1, section.palette.mid());
}

void drawProgress(const QStyleOptionProgressBar& bar, QPainter& painter)
{
    const QRectF groove(bar.rect);
    const double round = groove.height() / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(bar.palette.color(QPalette::Mid));
    painter.drawRoundedRect(groove, round, round);
    const int range = std::max(bar.maximum - bar.minimum, 1);
    const double done = groove.width() * (bar.progress - bar.minimum) / range;
    if (done < groove.height()) return;
    painter.setBrush(bar.palette.color(QPalette::Highlight));
    painter.drawRoundedRect(QRectF(groove.left(), groove.top(), done, groove.height()), round, round);
}

void drawDockTitle(const QProxyStyle& style, const QStyleOptionDockWidget& title, QPainter& painter)
{
    painter.fillRect(title.rect, title.palette.window());
    painter.fillRect(title.rect.left(), title.rect.top(), title.rect.width(), 1, title.palette.mid());
    const QRect place = title.rect.adjusted(12, 2, -48, 0);
    style.drawItemText(&painter, place, Qt::AlignLeft | Qt::AlignVCenter, title.palette, true,
                       title.fontMetrics.elidedText(title.title, Qt::ElideRight, place.width()),
                       QPalette::PlaceholderText);
}

void drawMenuBarItem(const QProxyStyle& style, const QStyleOptionMenuItem& item, QPainter& painter)
{
    painter.fillRect(item.rect, item.palette.window());
    const bool chosen = item.state & QStyle::State_Selected;
    if (chosen) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(item.palette.color(QPalette::Button));
        painter.drawRoundedRect(QRectF(item.rect).adjusted(0, 1, 0, -1), 4, 4);
    }
    style.drawItemText(&painter, item.rect, Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine, item.palette,
                       item.state & QStyle::State_Enabled, item.text, QPalette::WindowText);
}

void drawButton(const QStyleOption& button, QPainter& painter)
{
    const QPalette& colours = button.palette;
    const bool down = button.state & (QStyle::State_Sunken | QStyle::State_On);
    const bool hovered = button.state & QStyle::State_MouseOver;
    const bool focused = button.state & QStyle::State_HasFocus;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(focused ? QPen(colours.color(QPalette::Highlight), 2) : QPen(Qt::NoPen));
    painter.setBrush(blend(colours.color(QPalette::Text), colours.color(QPalette::Button),
                           down      ? 0.2
                           : hovered ? 0.1
                                     : 0.0));
    painter.drawRoundedRect(QRectF(button.rect).adjusted(1, 1, -1, -1), 5, 5);
}

/// Whether the place to type in stands in a frame of its own.
bool isFramed(const QStyleOption* option)
{
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    return frame && frame->lineWidth > 0;
}

} // namespace

FlatStyle::FlatStyle() : QProxyStyle(QStyleFactory::create("fusion")) {}

int FlatStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent: return 12;
    case PM_ScrollBarSliderMin: return 32;
    case PM_SplitterWidth:
    case PM_DockWidgetFrameWidth:
    case PM_DockWidgetSeparatorExtent: return 1;
    case PM_MenuVMargin: return 4;
    case PM_MenuBarVMargin: return 2;
    case PM_MenuBarItemSpacing: return 4;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight: return 16;
    default: return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int FlatStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* result) const
{
    switch (hint) {
    case SH_ToolTip_WakeUpDelay: return 500;
    case SH_DialogButtonBox_ButtonsHaveIcons: return 0;
    default: break;
    }
    return QProxyStyle::styleHint(hint, option, widget, result);
}

QSize FlatStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const
{
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    switch (type) {
    case CT_PushButton: return size.expandedTo({contents.width() + 24, contents.height() + 10});
    case CT_LineEdit: return isFramed(option) ? size + QSize(lineInset, 0) : size;
    case CT_SpinBox:
    case CT_ComboBox: return size + QSize(boxInset, 0);
    default: return size;
    }
}

QRect FlatStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const
{
    const QRect place = QProxyStyle::subElementRect(element, option, widget);
    return element == SE_LineEditContents && isFramed(option) ? place.adjusted(lineInset, 0, 0, 0) : place;
}

QRect FlatStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const
{
    const QRect place = QProxyStyle::subControlRect(control, option, part, widget);
    const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
    const bool isText =
        (box && box->frame && part == SC_SpinBoxEditField) || (control == CC_ComboBox && part == SC_ComboBoxEditField);
    return isText ? place.adjusted(boxInset, 0, 0, 0) : place;
}

void FlatStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    if (element == PE_FrameFocusRect && option->state & State_Enabled && qobject_cast<const QPushButton*>(widget))
        return;
    if (element == PE_FrameDockWidget) { // of one that floats
        painter->fillRect(option->rect, option->palette.mid());
        return;
    }
    if (element == PE_IndicatorDockWidgetResizeHandle) {
        painter->fillRect(option->rect, option->palette.mid());
        return;
    }
    if (element == PE_PanelStatusBar || element == PE_FrameStatusBarItem) return;
    if (element == PE_PanelTipLabel) {
        painter->fillRect(option->rect, option->palette.mid());
        painter->fillRect(option->rect.adjusted(1, 1, -1, -1), option->palette.toolTipBase());
        return;
    }
    const auto draw = [&](void (*drawn)(const QStyleOption&, QPainter&)) {
        painter->save();
        drawn(*option, *painter);
        painter->restore();
    };
    switch (element) {
    case PE_PanelButtonCommand: draw(drawButton); return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck: draw(drawCheckIndicator); return;
    case PE_IndicatorRadioButton: draw(drawRadioIndicator); return;
    case PE_FrameLineEdit: draw(drawInputFrame); return;
    default: QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void FlatStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const
{
    if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option); item && element == CE_MenuBarItem) {
        painter->save();
        drawMenuBarItem(*this, *item, *painter);
        painter->restore();
        return;
    }
    if (const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option); bar && element == CE_ProgressBar) {
        painter->save();
        drawProgress(*bar, *painter);
        painter->restore();
        return;
    }
    if (const auto* title = qstyleoption_cast<const QStyleOptionDockWidget*>(option);
        title && element == CE_DockWidgetTitle) {
        drawDockTitle(*this, *title, *painter);
        return;
    }
    switch (element) {
    case CE_HeaderSection:
    case CE_HeaderEmptyArea: drawHeaderSection(*option, *painter); return;
    case CE_Splitter: painter->fillRect(option->rect, option->palette.mid()); return;
    case CE_MenuBarEmptyArea: painter->fillRect(option->rect, option->palette.window()); return;
    default: QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const
{
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && bar) {
        painter->save();
        drawScrollBar(*this, *bar, *painter, widget);
        painter->restore();
        return;
    }
    if (const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(option); box && control == CC_SpinBox) {
        painter->save();
        drawSpinBox(*this, *box, *painter, widget);
        painter->restore();
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

} // namespace tessaro
