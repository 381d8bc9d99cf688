// SPDX-License-Identifier: GPL-3.0-or-later
// Composes the example song: `compose OUT.mid`.
#include "score.h"

#include <array>
#include <fstream>
#include <iostream>
#include <span>

namespace tessaro::compose {
namespace {

struct Chord {
    std::string_view bass;
    std::array<std::string_view, 4> voices;
};

constexpr std::array<Chord, 8> verse{{{"D2", {"F3", "A3", "C4", "E4"}},
                                      {"Bb1", {"F3", "A3", "Bb3", "D4"}},
                                      {"F2", {"E3", "A3", "C4", "F4"}},
                                      {"C2", {"E3", "G3", "A3", "E4"}},
                                      {"G2", {"F3", "G3", "Bb3", "D4"}},
                                      {"D2", {"F3", "A3", "C4", "D4"}},
                                      {"Bb1", {"F3", "A3", "Bb3", "D4"}},
                                      {"A1", {"E3", "G3", "A3", "C#4"}}}};

constexpr std::array<Chord, 8> waltz{{{"Bb1", {"F3", "A3", "D4", "F4"}},
                                      {"A1", {"F3", "A3", "C4", "F4"}},
                                      {"G2", {"F3", "Bb3", "D4", "F4"}},
                                      {"D2", {"F3", "A3", "C4", "F4"}},
                                      {"Eb2", {"G3", "Bb3", "D4", "G4"}},
                                      {"D2", {"F3", "Bb3", "D4", "F4"}},
                                      {"C2", {"Eb3", "G3", "Bb3", "Eb4"}},
                                      {"A1", {"E3", "G3", "C#4", "E4"}}}};

constexpr std::array<Chord, 8> chorus{{{"D2", {"F3", "A3", "D4", "F4"}},
                                       {"C2", {"E3", "G3", "C4", "E4"}},
                                       {"Bb1", {"F3", "Bb3", "D4", "F4"}},
                                       {"A1", {"F3", "A3", "C4", "F4"}},
                                       {"G2", {"G3", "Bb3", "D4", "G4"}},
                                       {"F2", {"F3", "A3", "D4", "F4"}},
                                       {"A1", {"E3", "G3", "C#4", "E4"}},
                                       {"D2", {"F3", "A3", "D4", "F4"}}}};

constexpr std::string_view verseTune = "D5:3 E5:1 F5:2 A5:2 G5:3 F5:1 D5:4 C5:3 D5:1 F5:2 G5:2 A5:3 G5:1 E5:4 "
                                       "Bb5:3 A5:1 G5:2 F5:2 A5:3 F5:1 D5:4 D5:2 F5:2 A5:2 G5:2 E5:4 C#5:4";
constexpr std::string_view waltzTune = "F5:4 D5:2 C5:4 A4:2 Bb4:3 C5:1 D5:2 F5:6 G5:4 Eb5:2 F5:4 D5:2 Eb5:3 D5:1 C5:2 "
                                       "E5:2 G5:2 C#5:2";
constexpr std::string_view chorusTune =
    "A5:2 A5:1 G5:1 F5:2 E5:2 G5:3 E5:1 C5:4 D5:2 D5:1 F5:1 Bb5:2 A5:2 C6:3 A5:1 F5:4 "
    "Bb5:2 A5:1 G5:1 D5:2 G5:2 F5:3 A5:1 D5:4 G5:2 F5:2 E5:2 C#5:2 D5:8";
constexpr std::string_view answerTune = "-:4 F4:1 A4:1 D5:2 -:4 G4:1 C5:1 E5:2 -:4 D5:1 Bb4:1 F4:2 -:4 C5:1 F5:1 A5:2 "
                                        "-:4 Bb4:1 D5:1 G5:2 -:4 A4:1 D5:1 F5:2 -:4 E5:1 C#5:1 A4:2 D5:8";

/// The example song: ten parts, a waltz between two verses, a slowing end.
class HarbourLights {
public:
    std::vector<std::uint8_t> compose()
    {
        introduction();
        verseSection(72, false);
        waltzSection();
        chorusSection();
        verseSection(84, true);
        chorusSection();
        ending();
        const std::uint32_t end = m_now + 4 * quarter;
        std::vector<std::vector<std::uint8_t>> chunks{m_conductor.chunk(end)};
        for (const Part* part :
             {&m_flute, &m_piano, &m_bass, &m_strings, &m_vibes, &m_guitar, &m_brass, &m_harp, &m_pad, &m_drums})
            chunks.push_back(part->chunk(end));
        return midiFile(chunks);
    }

private:
    static constexpr std::uint32_t bar = 4 * quarter;
    static constexpr std::uint32_t waltzBar = 3 * quarter;
    static constexpr int kick = 36;
    static constexpr int rim = 37;
    static constexpr int snare = 38;
    static constexpr int closedHat = 42;
    static constexpr int openHat = 46;
    static constexpr int crash = 49;
    static constexpr int ride = 51;

    void introduction()
    {
        m_conductor.marker(m_now, "Introduction");
        m_conductor.signature(m_now, 4, 2);
        m_conductor.key(m_now, -1, true);
        m_conductor.tempo(m_now, 92);
        for (const Chord& chord : std::span(verse).first(4)) {
            arpeggio(m_piano, m_now, chord, 8, 76);
            m_vibes.note(m_now + 2 * quarter, keyOf(chord.voices[3]) + 12, 2 * quarter, 72);
            m_vibes.note(m_now + 3 * quarter, keyOf(chord.voices[2]) + 12, quarter, 64);
            hold(m_pad, m_now, chord, bar, 52);
            m_now += bar;
        }
        m_pad.ramp(0, m_now, 11, 64, 112);
    }

    void verseSection(int velocity, bool full)
    {
        m_conductor.marker(m_now, full ? "Second verse" : "Verse");
        m_conductor.tempo(m_now, full ? 104 : 98);
        m_flute.line(m_now, verseTune, velocity + 14);
        vibrato(m_flute, m_now, verse.size() * bar);
        for (std::size_t i = 0; i < verse.size(); ++i) {
            const Chord& chord = verse[i];
            bassLine(m_now, chord, velocity + 10);
            strum(m_now, chord, velocity - 8);
            arpeggio(m_piano, m_now, chord, 8, velocity - 14);
            if (full || i >= 4) hold(m_strings, m_now, chord, bar, velocity - 10);
            if (full) m_vibes.note(m_now + 3 * quarter, keyOf(chord.voices[1]) + 24, quarter, velocity - 12);
            lightBeat(m_now, velocity, i + 1 == verse.size());
            m_now += bar;
        }
    }

    void waltzSection()
    {
        m_conductor.marker(m_now, "Waltz");
        m_conductor.signature(m_now, 3, 2);
        m_conductor.key(m_now, -2, false);
        m_conductor.tempo(m_now, 126);
        const std::uint32_t top = m_now;
        m_vibes.line(m_now, waltzTune, 78, 1.1);
        m_flute.line(m_now + 4 * waltzBar, "-:2 Bb5:2 D6:2 -:2 F5:2 Bb5:2 -:2 G5:2 Eb5:2 E5:6", 66);
        for (const Chord& chord : waltz) {
            m_bass.note(m_now, keyOf(chord.bass), 2 * quarter, 76);
            for (const std::uint32_t beat : {1U, 2U})
                for (const std::string_view voice : std::span(chord.voices).first(3))
                    m_piano.note(m_now + beat * quarter, keyOf(voice) + 12, quarter / 2, 50);
            arpeggio(m_harp, m_now, chord, 6, 60);
            hold(m_strings, m_now, chord, waltzBar, 58);
            m_drums.note(m_now, ride, quarter, 46);
            m_drums.note(m_now + quarter, rim, quarter, 38);
            m_drums.note(m_now + 2 * quarter, rim, quarter, 34);
            m_now += waltzBar;
        }
        m_strings.ramp(top, m_now, 11, 70, 120);
        for (std::uint32_t i = 0; i < 6; ++i) m_conductor.tempo(m_now - waltzBar + i * eighth, 122 - 6.0 * i);
        m_conductor.signature(m_now, 4, 2);
        m_conductor.key(m_now, -1, true);
    }

    void chorusSection()
    {
        m_conductor.marker(m_now, "Chorus");
        m_conductor.tempo(m_now, 112);
        m_drums.note(m_now, crash, bar, 92);
        m_brass.line(m_now, chorusTune, 88);
        m_flute.line(m_now, chorusTune, 70);
        m_guitar.line(m_now, answerTune, 76);
        scoops(m_now);
        for (std::size_t i = 0; i < chorus.size(); ++i) {
            const Chord& chord = chorus[i];
            bassLine(m_now, chord, 92);
            hold(m_strings, m_now, chord, bar, 72);
            hold(m_pad, m_now, chord, bar, 56);
            for (std::uint32_t beat = 0; beat < 4; ++beat)
                for (const std::string_view voice : std::span(chord.voices).first(3))
                    m_piano.note(m_now + beat * quarter, keyOf(voice) + 12, quarter * 3 / 4, beat % 2 ? 62 : 70);
            fullBeat(m_now, i % 4 == 3);
            m_now += bar;
        }
        m_strings.ramp(m_now - 8 * bar, m_now - 4 * bar, 11, 80, 120);
    }

    void ending()
    {
        m_conductor.marker(m_now, "Ending");
        const std::uint32_t top = m_now;
        for (std::uint32_t i = 0; i < 16; ++i) m_conductor.tempo(top + i * quarter, 100 - 3.0 * i);
        m_flute.line(m_now, "D5:3 E5:1 F5:4 D5:3 C5:1 Bb4:4 A4:4 G4:4 A4:4 C#5:4", 70);
        for (const std::size_t i : {0U, 1U, 4U, 7U}) {
            arpeggio(m_piano, m_now, verse[i], 8, 52);
            hold(m_strings, m_now, verse[i], bar, 54);
            m_bass.note(m_now, keyOf(verse[i].bass), bar - eighth, 66);
            m_now += bar;
        }
        m_conductor.signature(m_now, 5, 2);
        m_conductor.tempo(m_now, 60);
        const Chord major{"D2", {"F#3", "A3", "D4", "E4"}};
        arpeggio(m_harp, m_now, major, 8, 62);
        m_flute.note(m_now, keyOf("F#5"), 5 * quarter, 60);
        for (Part* part : {&m_strings, &m_pad, &m_piano}) hold(*part, m_now, major, 5 * quarter, 56);
        m_bass.note(m_now, keyOf("D2"), 5 * quarter, 64);
        m_drums.note(m_now, ride, bar, 40);
        for (Part* part : {&m_strings, &m_pad, &m_flute}) part->ramp(m_now + quarter, m_now + 5 * quarter, 11, 110, 20);
        m_now += 5 * quarter;
    }

    static void hold(Part& part, std::uint32_t time, const Chord& chord, std::uint32_t length, int velocity)
    {
        for (const std::string_view voice : chord.voices) part.note(time, keyOf(voice) + 12, length - 12, velocity);
    }

    static void arpeggio(Part& part, std::uint32_t time, const Chord& chord, std::uint32_t steps, int velocity)
    {
        static constexpr std::array<std::size_t, 8> order{0, 1, 2, 3, 2, 3, 1, 2};
        for (std::uint32_t i = 0; i < steps; ++i) {
            const int octave = i == 3 || i == 5 ? 24 : 12;
            part.note(time + i * eighth, keyOf(chord.voices[order[i]]) + octave, eighth * 3 / 2,
                      velocity + (i % 4 ? 0 : 8));
        }
    }

    void strum(std::uint32_t time, const Chord& chord, int velocity)
    {
        for (const std::uint32_t step : {0U, 3U, 4U, 6U})
            for (std::uint32_t i = 0; i < chord.voices.size(); ++i)
                m_guitar.note(time + step * eighth + i * 9, keyOf(chord.voices[i]) + 12, eighth,
                              velocity - (step % 2 ? 8 : 0));
    }

    void bassLine(std::uint32_t time, const Chord& chord, int velocity)
    {
        const int root = keyOf(chord.bass);
        m_bass.note(time, root, 3 * eighth - 20, velocity);
        m_bass.note(time + 3 * eighth, root + 12, eighth - 20, velocity - 14);
        m_bass.note(time + 4 * eighth, root + 7, 2 * eighth - 20, velocity - 6);
        m_bass.note(time + 6 * eighth, root, eighth - 20, velocity - 8);
        m_bass.note(time + 7 * eighth, root + 12, eighth - 30, velocity - 16);
    }

    void lightBeat(std::uint32_t time, int velocity, bool fill)
    {
        for (std::uint32_t i = 0; i < 8; ++i)
            m_drums.note(time + i * eighth, closedHat, 60, velocity - (i % 2 ? 34 : 22));
        for (const std::uint32_t step : {0U, 5U}) m_drums.note(time + step * eighth, kick, 120, velocity);
        m_drums.note(time + 2 * eighth, rim, 120, velocity - 4);
        m_drums.note(time + 6 * eighth, rim, 120, velocity - 2);
        if (!fill) return;
        for (std::uint32_t i = 0; i < 4; ++i)
            m_drums.note(time + 6 * eighth + i * eighth / 2, snare, 100, velocity - 20 + 8 * static_cast<int>(i));
    }

    void fullBeat(std::uint32_t time, bool fill)
    {
        for (std::uint32_t i = 0; i < 8; ++i)
            m_drums.note(time + i * eighth, i == 7 ? openHat : closedHat, 80, i % 2 ? 54 : 70);
        for (const std::uint32_t step : {0U, 3U, 4U})
            m_drums.note(time + step * eighth, kick, 120, step == 3 ? 76 : 98);
        for (const std::uint32_t step : {2U, 6U}) m_drums.note(time + step * eighth, snare, 120, 92);
        if (!fill) return;
        static constexpr std::array<int, 4> toms{50, 48, 45, 41};
        for (std::uint32_t i = 0; i < 4; ++i) m_drums.note(time + 6 * eighth + i * eighth / 2, toms[i], 120, 82);
    }

    static void vibrato(Part& part, std::uint32_t from, std::size_t length)
    {
        for (std::uint32_t t = 0; t < length; t += bar) {
            part.control(from + t, 1, 0);
            part.ramp(from + t + 2 * quarter, from + t + bar - 20, 1, 0, 48);
        }
    }

    void scoops(std::uint32_t from)
    {
        for (std::uint32_t t = 0; t < 8 * bar; t += 2 * bar)
            for (std::uint32_t i = 0; i <= 8; ++i) m_brass.bend(from + t + i * 12, -0.5 + i / 16.0);
    }

    std::uint32_t m_now = 0;
    Conductor m_conductor{"Harbour Lights"};
    Part m_flute{"Flute", 0, 73, 100, 72, 70};
    Part m_piano{"Piano", 1, 0, 92, 52, 48};
    Part m_bass{"Fingered Bass", 2, 33, 104, 64, 16};
    Part m_strings{"Strings", 3, 48, 84, 64, 84};
    Part m_vibes{"Vibraphone", 4, 11, 92, 90, 64};
    Part m_guitar{"Nylon Guitar", 5, 24, 88, 34, 44};
    Part m_brass{"Brass", 6, 61, 82, 80, 60};
    Part m_harp{"Harp", 7, 46, 94, 28, 72};
    Part m_pad{"Warm Pad", 8, 89, 70, 64, 90};
    Part m_drums{"Drums", 9, 0, 98, 64, 32};
};

} // namespace
} // namespace tessaro::compose

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: compose OUT.mid\n";
        return 2;
    }
    const std::vector<std::uint8_t> song = tessaro::compose::HarbourLights().compose();
    std::ofstream out(argv[1], std::ios::binary);
    out.write(reinterpret_cast<const char*>(song.data()), static_cast<std::streamsize>(song.size()));
    if (out.flush()) return 0;
    std::cerr << "cannot write " << argv[1] << '\n';
    return 1;
}
