// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/editor.h"
#include "core/ports/hint_observer.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tessaro::test {

/// Keeps what the user was told and asked.
struct FakeUser final : UserPort {
    bool answer = false;
    std::vector<int> questions;
    std::vector<int> messages;
    std::vector<std::string> sentences;
    std::vector<std::string> statuses;

    void message(int id, MessageKind) override { messages.push_back(id); }
    void sentence(std::string_view text, MessageKind) override { sentences.emplace_back(text); }
    bool ask(int id) override
    {
        questions.push_back(id);
        return answer;
    }
    bool ask(std::string_view) override { return answer; }
    void status(std::string_view text) override { statuses.emplace_back(text); }
};

/// Keeps what the progress bar showed.
struct FakeProgress final : ProgressPort {
    int begun = 0;
    int ended = 0;
    std::vector<std::uint32_t> positions;
    std::vector<std::string> texts;

    void begin() override { ++begun; }
    void range(std::uint32_t, std::uint32_t) override {}
    void pos(std::uint32_t position) override { positions.push_back(position); }
    void text(std::string_view line) override { texts.emplace_back(line); }
    void end() override { ++ended; }
};

/// A transport that plays when told so, and counts what the editor asks.
struct FakeTransport final : Transport {
    bool playing = false;
    bool recording = false;
    std::vector<std::string> calls;
    bool on[trackCount + stylePartCount];
    CEditor* bound = nullptr;

    FakeTransport() { std::fill(std::begin(on), std::end(on), true); }

    bool isPlaying() const override { return playing; }
    void stop() override
    {
        playing = false;
        calls.emplace_back("stop");
    }
    void resume() override
    {
        playing = true;
        calls.emplace_back("resume");
    }
    void halt() override
    {
        playing = recording = false;
        calls.emplace_back("halt");
    }
    bool isRecording() const override { return recording; }
    std::uint32_t playCount() const override { return 0; }
    void bindSong(CEditor* editor) override
    {
        bound = editor;
        calls.emplace_back(editor ? "bind" : "unbind");
    }
    bool getTrkSw(int track) const override { return on[track]; }
    void setTrkSw(int track, bool value) override
    {
        on[track] = value;
        calls.push_back("sw" + std::to_string(track));
    }
    void setTrkPort(int track, std::uint8_t v) override { note("port", track, v); }
    void setTrkCh(int track, std::uint8_t v) override { note("ch", track, v); }
    void setTrkTrans(int track, int v) override { note("trans", track, v); }
    void setTrkTransEnable(int track, bool v) override { note("transOn", track, v); }
    void reloadTracks() override { calls.emplace_back("reload"); }

    [[nodiscard]] std::vector<int> sounding() const
    {
        std::vector<int> numbers;
        for (int n = 1; n < trackCount; ++n)
            if (on[n]) numbers.push_back(n);
        return numbers;
    }

private:
    void note(const char* what, int track, int v)
    {
        calls.push_back(what + std::to_string(track) + "=" + std::to_string(v));
    }
};

struct FakeDocument final : DocumentPort {
    bool modified = false;
    void SetModifiedFlag(bool flag) override { modified = flag; }
    bool IsModified() const override { return modified; }
};

struct FakeWaves final : WaveLengths {
    std::map<std::string, std::uint32_t> lengths;
    std::optional<std::uint32_t> milliseconds(const std::string& name) override
    {
        const auto at = lengths.find(name);
        return at == lengths.end() ? std::nullopt : std::optional(at->second);
    }
};

/// Recognises what the test says, and fills the song by a function of the test.
struct FakeFiles final : SongFiles {
    std::uint8_t kind = 2;
    std::vector<std::uint8_t> behind; ///< what a reader found behind the file
    std::function<LoadResult(CEditor&)> fill = [](CEditor&) { return LoadResult::complete; };

    _EDT_FILE recognise(std::span<std::uint8_t> buffer, std::uint32_t length) override
    {
        behind.assign(buffer.begin() + length, buffer.end());
        _EDT_FILE file;
        file.kind = kind;
        file.fileLength = length;
        file.buffer = buffer.data();
        return file;
    }
    LoadResult load(const _EDT_FILE&, CEditor& editor) override { return fill(editor); }
    bool writes = false; ///< songs without a byte
    bool save(std::uint8_t, CEditor&, ByteSink&) override { return writes; }
};

/// A view that keeps the codes it hears; the payload is read during the call by `read`.
struct FakeView final : HintObserver {
    std::vector<int> codes;
    std::vector<bool> withEditor;
    std::function<void(int, CEditor*)> read;

    void onHint(const HintObserver*, int code, CEditor* editor) override
    {
        codes.push_back(code);
        withEditor.push_back(editor != nullptr);
        if (read) read(code, editor);
    }
};

/// An editor with fakes where tests look, and null objects elsewhere.
struct EditorBench {
    explicit EditorBench(ScoreLinks* links = nullptr)
        : editor({document, files, user, progress, transport, waves, quiet.waveOutput, links ? *links : quiet.score})
    {
    }

    QuietPorts quiet;
    FakeUser user;
    FakeProgress progress;
    FakeTransport transport;
    FakeDocument document;
    FakeWaves waves;
    FakeFiles files;
    CEditor editor;
};

/// A record of a channel event; `time` is block-relative.
inline _EDT_EVNT noteRec(std::uint32_t time, std::uint32_t gate, std::uint8_t note = 60)
{
    _EDT_EVNT rec;
    rec.status = 0x90;
    rec.post1 = note;
    rec.post2 = 100;
    rec.time = time;
    rec.gateTime = gate;
    return rec;
}

inline _EDT_EVNT bytesRec(std::uint8_t status, std::uint32_t time, const std::vector<std::uint8_t>& body,
                          std::uint8_t metaType = 0)
{
    _EDT_EVNT rec;
    rec.status = status;
    rec.metaType = metaType;
    rec.time = time;
    rec.szData = static_cast<std::uint32_t>(body.size());
    rec.data = body.data();
    return rec;
}

inline _EDT_EVNT waveRec(std::uint32_t time, std::string file)
{
    _EDT_EVNT rec;
    rec.status = 0x40;
    rec.time = time;
    rec.fileName = std::move(file);
    return rec;
}

} // namespace tessaro::test
