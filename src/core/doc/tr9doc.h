// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/file.h"
#include "base/strings.h"
#include "core/edit/editor.h"
#include "core/ports/app_windows.h"

#include <cstdint>
#include <string>

namespace tessaro {

/// All that a song document asks of its surroundings. Every port outlives the document.
struct DocumentPorts {
    SongFiles& files;
    UserPort& user;
    ProgressPort& progress;
    Transport& transport;
    WaveLengths& waveLengths;
    WaveOutput& waveOutput;
    ScoreLinks& score;
    AppWindows& windows;
    const Strings& strings;
};

/// The song document: one song editor for its whole life, and the file that the song came from. Opening another
/// file replaces the song; when that fails a new song stands, and the reason has been shown. Main thread only.
class TESSARO_API CTR9Doc final : public DocumentPort {
public:
    /// The largest file that is read: offsets into the buffer, 16 bytes longer, stay positive in 32 bits.
    static constexpr std::uint64_t largestFile = 0x7FFFFFFF - 16;

    explicit CTR9Doc(const DocumentPorts& ports);
    ~CTR9Doc() override;

    /// A new song, with the position at its top. False when the editor could not be set up, which has been shown.
    bool OnNewDocument();
    /// Reads a song file of any known kind.
    bool Load(const std::string& path);

    void StopTransport();

    void SetModifiedFlag(bool modified) override { m_modified = modified; }
    [[nodiscard]] bool IsModified() const override { return m_modified; }
    /// Empty for a song that has no file.
    [[nodiscard]] const std::string& GetPathName() const noexcept { return m_path; }
    /// 0 none, 1 standard MIDI file of format 0, 2 of format 1, 3 ZP, 4 native, 5 native with waves, 6 player file.
    [[nodiscard]] std::uint8_t GetFileKind() const noexcept { return m_kind; }
    [[nodiscard]] CEditor& GetEditor() noexcept { return m_editor; }

private:
    enum class Outcome { loaded, loadedInPart, notSupported, unreadable };

    Outcome read(const std::string& path);
    Outcome readSong(std::vector<std::uint8_t>& buffer);
    bool startNewSong();
    void handOver();
    void detachSong();

    DocumentPorts m_ports;
    CEditor m_editor;
    std::string m_path;
    FileError m_fileError = FileError::none;
    std::uint8_t m_kind = 0;
    bool m_modified = false;
};

} // namespace tessaro
