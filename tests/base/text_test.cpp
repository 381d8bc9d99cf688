// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/strings.h"
#include "base/text.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

namespace tessaro {
namespace {

TEST(Text, ShowsUtf8ThenCodePage932ThenLatin1)
{
    EXPECT_EQ(toUtf8(""), "");
    EXPECT_EQ(toUtf8("日本語 é 😀"), "日本語 é 😀");
    EXPECT_EQ(toUtf8("\x93\xFA\x96\x7B \xC3\xBD\xC4"), "日本 ﾃｽﾄ"); // kanji and half-width kana
    EXPECT_EQ(toUtf8("\x83\x5C\x83\x7C"), "ソポ");                  // second bytes that look like ASCII
    EXPECT_EQ(toUtf8("\x81\x60\x87\x40\xFB\xFC"), "～①髙");         // the maker's own rows
    EXPECT_EQ(toUtf8("caf\xE9"), "café");                           // a lead byte without its second
    EXPECT_EQ(toUtf8("f\xFCr"), "für");
    EXPECT_EQ(toUtf8("\x93\xFA\x96"), "\u0093ú\u0096"); // cut inside a character
    EXPECT_EQ(toUtf8("\x80\xFF"), "\u0080ÿ");
}

TEST(Text, TakesOnlyStrictUtf8ForUtf8)
{
    for (const char* good :
         {"\x7F", "\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(isUtf8(good));
    for (const char* bad : {"\x80", "\xC1\xBF", "\xC2", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
                            "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xE3\x81", "\xE3\x81\x41"})
        EXPECT_FALSE(isUtf8(bad));
}

TEST(Text, StoresTypedTextSoThatItComesBack)
{
    EXPECT_EQ(fromUtf8("Piano 1"), "Piano 1");
    EXPECT_EQ(fromUtf8("日本 ﾃｽﾄ"), "\x93\xFA\x96\x7B \xC3\xBD\xC4");
    EXPECT_EQ(fromUtf8("é日"), "é日"); // no é in the code page
    EXPECT_EQ(fromUtf8("〜"), "〜");   // would come back as another wave
    EXPECT_EQ(fromUtf8("ﾃｱ"), "ﾃｱ");   // its bytes in the code page are those of a UTF-8 letter
    for (const char* text : {"\\~", "¥‾", "−‖…", "ソ表", "①Ⅰ㈱", "😀", "\u0080", "ﾃｱé"})
        EXPECT_EQ(toUtf8(fromUtf8(text)), text);
    // Any two bytes of a file show as valid text that survives being typed again.
    for (int i = 0x8000; i < 0x10000; ++i) {
        const std::string bytes{static_cast<char>(i >> 8), static_cast<char>(i & 0xFF)};
        const std::string shown = toUtf8(bytes);
        ASSERT_TRUE(isUtf8(shown)) << i;
        ASSERT_EQ(toUtf8(fromUtf8(shown)), shown) << i;
    }
}

TEST(Strings, AnswerInTheLanguageInUse)
{
    Strings strings(Language::japanese);
    EXPECT_EQ(strings(TextId::alreadyRunning), "すでに起動しています");
    EXPECT_EQ(strings(TextId{904}), "このﾌｧｲﾙのﾌｫｰﾏｯﾄはｻﾎﾟｰﾄしていません。");
    strings.setLanguage(Language::english);
    EXPECT_EQ(strings(TextId::undoQuantize), "Quantise");
    EXPECT_EQ(strings(TextId{1}), "");
    EXPECT_EQ(strings(TextId{1'000'000}), "");
}

TEST(Strings, BothTablesAskForTheSameValues)
{
    const auto marks = [](std::string_view s) {
        std::multiset<std::string> found;
        for (std::size_t i = s.find('%'); i != s.npos && i + 1 < s.size(); i = s.find('%', i + 2))
            found.emplace(s.substr(i, 2));
        return found;
    };
    const auto check = [&](int number, std::string_view japanese, std::string_view english) {
        EXPECT_TRUE(isUtf8(japanese) && isUtf8(english)) << number;
        EXPECT_TRUE(!japanese.empty() && !english.empty()) << number;
        EXPECT_EQ(marks(japanese), marks(english)) << number;
    };
#define TESSARO_TEXT(name, number, japanese, english) check(number, japanese, english);
#include "base/strings_table.h"
#undef TESSARO_TEXT
}

TEST(Strings, LanguageComesFromTheFirstVariableThatIsSet)
{
    const auto language = [](const char* all, const char* messages, const char* lang) {
        setenv("LC_ALL", all, 1);
        setenv("LC_MESSAGES", messages, 1);
        setenv("LANG", lang, 1);
        return languageFromEnvironment();
    };
    EXPECT_EQ(language("", "", "ja_JP.UTF-8"), Language::japanese);
    EXPECT_EQ(language("", "C", "ja_JP.UTF-8"), Language::english);
    EXPECT_EQ(language("ja", "de_DE", "C"), Language::japanese);
    EXPECT_EQ(language("", "", ""), Language::english);
}

} // namespace
} // namespace tessaro
