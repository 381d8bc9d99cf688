// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/device_sentence.h"

#include "views/text/ui_text.h"

#include <QStringList>

namespace tessaro {
namespace {

QString soundSentence(const UiText& text, const SoundStatus& sound)
{
    switch (sound.state) {
    case SoundState::unused: return text(TextId::soundReady);
    case SoundState::starting: return text(TextId::soundStarting);
    case SoundState::playing: return text(TextId::soundPlaying).arg(utf8Text(sound.device)).arg(sound.rate);
    case SoundState::silent: return text(TextId::soundSilent);
    case SoundState::lost: return text(TextId::soundLost);
    case SoundState::none: return text(TextId::soundNone).arg(utf8Text(sound.trouble));
    }
    return {};
}

} // namespace

QString deviceSentence(const UiText& text, const SoundStatus& sound, const std::vector<std::string>& midiServices,
                       bool realtimeGranted)
{
    QStringList services;
    for (const std::string& service : midiServices) services << utf8Text(service);
    QStringList sentences{soundSentence(text, sound)};
    sentences << (services.isEmpty() ? text(TextId::midiNone)
                                     : text(TextId::midiThrough).arg(services.join(QStringLiteral(", "))));
    if (!realtimeGranted) sentences << text(TextId::realtimeRefused);
    return sentences.join(text.language() == Language::japanese ? QString() : QStringLiteral(" "));
}

} // namespace tessaro
