// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTranslator>

namespace tessaro {

class UiText;

/// Gives the toolkit's own words, those of its boxes and of its file dialog, in the language in use. Boxes and dialogs
/// made while it lives speak so.
class ToolkitTexts : public QTranslator {
public:
    /// Borrowed.
    explicit ToolkitTexts(const UiText& text);
    ~ToolkitTexts() override;

    [[nodiscard]] bool isEmpty() const override { return false; }
    /// Null for what the table does not hold; the toolkit then takes its English.
    QString translate(const char* context, const char* source, const char* note, int count) const override;

private:
    const UiText& m_text;
};

} // namespace tessaro
