// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/text/toolkit_texts.h"

#include "views/text/ui_text.h"

#include <QCoreApplication>

namespace tessaro {
namespace {

constexpr int first = static_cast<int>(TextId::toolkitYes);
constexpr int last = static_cast<int>(TextId::toolkitFindFolder);

} // namespace

ToolkitTexts::ToolkitTexts(const UiText& text) : m_text(text) { QCoreApplication::installTranslator(this); }
ToolkitTexts::~ToolkitTexts() { QCoreApplication::removeTranslator(this); }

QString ToolkitTexts::translate(const char*, const char* source, const char*, int) const
{
    for (int id = first; id <= last; ++id)
        if (text(static_cast<TextId>(id), Language::english) == source) return m_text(static_cast<TextId>(id));
    return {};
}

} // namespace tessaro
