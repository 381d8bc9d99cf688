// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/theme/colours.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tessaro {
namespace {

struct Roles {
    QRgb window, windowText, base, alternate, text, quiet, button, line, accent, onAccent, link, tip, faint;
};

constexpr Roles lightRoles{
    .window = 0xFFF1F3F6,
    .windowText = 0xFF1C2128,
    .base = 0xFFFFFFFF,
    .alternate = 0xFFF7F8FA,
    .text = 0xFF1C2128,
    .quiet = 0xFF59636F,
    .button = 0xFFE4E8ED,
    .line = 0xFFD3D8DF,
    .accent = 0xFF1F63D0,
    .onAccent = 0xFFFFFFFF,
    .link = 0xFF1A58BD,
    .tip = 0xFFFFFFFF,
    .faint = 0xFFA0A8B2,
};

constexpr Roles darkRoles{
    .window = 0xFF20242A,
    .windowText = 0xFFE3E7EC,
    .base = 0xFF171A1F,
    .alternate = 0xFF1B1F24,
    .text = 0xFFE3E7EC,
    .quiet = 0xFF9AA4B0,
    .button = 0xFF2F353D,
    .line = 0xFF363D46,
    .accent = 0xFF6AA8FF,
    .onAccent = 0xFF0C1420,
    .link = 0xFF85B8FF,
    .tip = 0xFF2F353D,
    .faint = 0xFF5E6873,
};

QPalette makePalette(const Roles& r)
{
    QPalette p;
    p.setColor(QPalette::Window, QColor(r.window));
    p.setColor(QPalette::WindowText, QColor(r.windowText));
    p.setColor(QPalette::Base, QColor(r.base));
    p.setColor(QPalette::AlternateBase, QColor(r.alternate));
    p.setColor(QPalette::Text, QColor(r.text));
    p.setColor(QPalette::PlaceholderText, QColor(r.quiet));
    p.setColor(QPalette::Button, QColor(r.button));
    p.setColor(QPalette::ButtonText, QColor(r.text));
    p.setColor(QPalette::BrightText, QColor(r.onAccent));
    p.setColor(QPalette::Mid, QColor(r.line));
    p.setColor(QPalette::Midlight, blend(QColor(r.line), QColor(r.window), 0.5));
    p.setColor(QPalette::Light, blend(Qt::white, QColor(r.button), 0.1));
    p.setColor(QPalette::Dark, blend(Qt::black, QColor(r.line), 0.2));
    p.setColor(QPalette::Shadow, blend(Qt::black, QColor(r.window), 0.4));
    p.setColor(QPalette::Highlight, QColor(r.accent));
    p.setColor(QPalette::HighlightedText, QColor(r.onAccent));
    p.setColor(QPalette::Link, QColor(r.link));
    p.setColor(QPalette::LinkVisited, QColor(r.link));
    p.setColor(QPalette::ToolTipBase, QColor(r.tip));
    p.setColor(QPalette::ToolTipText, QColor(r.text));
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        p.setColor(QPalette::Disabled, role, QColor(r.faint));
    p.setColor(QPalette::Disabled, QPalette::Highlight, QColor(r.line));
    return p;
}

constexpr std::array<QRgb, 16> lightTracks{
    0x2D78BD, 0x5B6DC0, 0x7B62B8, 0x9359A6, 0xA5538C, 0xB04F6E, 0xB4514C, 0xB05926,
    0xA06604, 0x8C7202, 0x737C03, 0x4C8634, 0x038A5A, 0x008779, 0x09848F, 0x0380A6,
};
constexpr std::array<QRgb, 16> darkTracks{
    0x76B6F7, 0x98ACFA, 0xB6A2F3, 0xCF9AE1, 0xE294C8, 0xEE91AB, 0xF1938C, 0xED9A6F,
    0xE0A45A, 0xCBAF54, 0xAFBA60, 0x8DC279, 0x69C898, 0x47C9B7, 0x3DC6D4, 0x54BFEA,
};

/// Relative luminance, 0 to 1.
double luminance(const QColor& colour)
{
    const auto linear = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

} // namespace

QPalette lightPalette() { return makePalette(lightRoles); }
QPalette darkPalette() { return makePalette(darkRoles); }

bool isDark(const QPalette& palette)
{
    return luminance(palette.color(QPalette::Window)) < luminance(palette.color(QPalette::WindowText));
}

QColor trackColour(int track, const QPalette& palette)
{
    const auto index = static_cast<std::size_t>(std::max(track - 1, 0)) % lightTracks.size();
    return QColor::fromRgb(isDark(palette) ? darkTracks[index] : lightTracks[index]);
}

QColor recordColour(const QPalette& palette) { return isDark(palette) ? QColor(0xFF6B61) : QColor(0xC62F28); }

QColor blend(const QColor& a, const QColor& b, double share)
{
    const auto mix = [share](int x, int y) { return static_cast<int>(std::lround(x * share + y * (1.0 - share))); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

double contrast(const QColor& a, const QColor& b)
{
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

} // namespace tessaro
