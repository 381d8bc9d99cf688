// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/fakes.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessaro::test {
namespace {

using Tracks = std::vector<int>;

TEST(SoloMute, SoloIsExclusiveAndMuteComesBack)
{
    EditorBench b;
    b.editor.SetTrkMute(3, true);
    b.editor.SetTrkSoloMute();
    EXPECT_FALSE(b.transport.on[3]);
    b.editor.SetTrkSolo(1, true);
    EXPECT_EQ(b.transport.sounding(), (Tracks{1}));
    b.editor.SetTrkSolo(3, true);
    EXPECT_EQ(b.transport.sounding(), (Tracks{3})) << "a muted track with solo plays";
    _EDT_TRKINFO info;
    b.editor.GetTrkInfo(1, info);
    EXPECT_FALSE(info.solo);
    b.editor.SetTrkSolo(3, false);
    EXPECT_EQ(b.transport.sounding(), (Tracks{3})) << "the others wait for the switches to be set";
    b.editor.SetTrkOnOff();
    EXPECT_FALSE(b.transport.on[3]);
    EXPECT_EQ(b.transport.sounding().size(), 99U);
    EXPECT_FALSE(b.document.modified);
}

TEST(SoloMute, AStyleSoloSilencesEveryTrack)
{
    EditorBench b;
    b.editor.styles().info().solo[8] = true;
    b.editor.SetTrkOnOff();
    EXPECT_TRUE(b.transport.sounding().empty());
    b.editor.SetTrkSolo(2, true);
    EXPECT_FALSE(b.editor.IsSoloExistStyle());
    EXPECT_EQ(b.transport.sounding(), (Tracks{2}));
}

TEST(SoloMute, TheEngineIsToldOfChangesOnly)
{
    EditorBench b;
    b.editor.SetTrkMute(4, true);
    b.editor.SetTrkOnOff();
    b.editor.SetTrkOnOff();
    EXPECT_EQ(b.transport.calls, (std::vector<std::string>{"sw4"}));
}

TEST(SoloMute, AChannelTakesAllItsTracksAlong)
{
    EditorBench b;
    b.editor.SetTrkTypePrivate(17, trktype::midi); // on channel 1 like track 1
    b.editor.SetTrkPort(18, 1);
    b.editor.SetTrkTypePrivate(18, trktype::midi); // on channel 2, another port than track 2
    FakeView view;
    b.editor.addObserver(&view);

    b.editor.SetChSoloOn(0, 0);
    EXPECT_EQ(b.transport.sounding(), (Tracks{1, 17}));
    EXPECT_EQ(view.codes, (std::vector{hint::trkSolo, hint::trkSolo, hint::chSolo}));
    view.codes.clear();
    b.editor.SetChSoloOn(0, 0);
    EXPECT_TRUE(view.codes.empty());

    b.editor.SetChSoloOn(1, 1);
    EXPECT_EQ(b.transport.sounding(), (Tracks{18}));
    b.editor.SetChSoloOff(0, 0);
    EXPECT_EQ(b.transport.sounding(), (Tracks{18})) << "the off form leaves other channels alone";
    b.editor.SetChSoloOff(1, 1);

    b.editor.SetChMuteOn(0, 1);
    EXPECT_FALSE(b.transport.on[2]);
    EXPECT_TRUE(b.transport.on[18]);
    view.codes.clear();
    b.editor.SetChMuteOff(0, 1);
    EXPECT_EQ(view.codes, (std::vector{hint::trkMute, hint::chMute}));
    EXPECT_TRUE(b.transport.on[2]);
}

TEST(SoloMute, WaveOutputFollowsTheSwitch)
{
    struct Output final : WaveOutput {
        std::vector<std::pair<int, bool>> mutes;
        void setMute(int track, bool mute) override { mutes.emplace_back(track, mute); }
        void setPortAndChannel(int, int, int) override {}
    } output;
    QuietPorts quiet;
    FakeDocument document;
    FakeFiles files;
    FakeTransport transport;
    CEditor editor({document, files, quiet.user, quiet.progress, transport, quiet.waveLengths, output, quiet.score});
    editor.SetTrkType(20, trktype::wave);
    editor.SetTrkSolo(1, true);
    editor.SetTrkSolo(20, true);
    EXPECT_EQ(output.mutes, (std::vector<std::pair<int, bool>>{{20, true}, {20, false}}));
}

} // namespace
} // namespace tessaro::test
