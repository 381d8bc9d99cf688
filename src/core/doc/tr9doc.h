// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/file.h"
#include "base/file_ops.h"
#include "base/strings.h"
#include "core/edit/editor.h"
#include "core/ports/app_windows.h"
#include "core/ports/hint_observer.h"
#include "core/ports/take_keeper.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessaro {

class Autosave;
struct RecoverableSong;
struct SongRecord;

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
    FileOps* disk = nullptr;      ///< null for the machine's own
    Autosave* autosave = nullptr; ///< null when no copies of unsaved work are kept
};

/// The song document: one song editor for its whole life, and the file that the song came from. Opening another
/// file replaces the song; when that fails a new song stands, and the reason has been shown. Neither asks about changes
/// that are not saved: the command calls SaveModified() before. Main thread only.
class TESSARO_API CTR9Doc final : public DocumentPort, public TakeKeeper, private HintObserver {
public:
    /// The largest file that is read: offsets into the buffer, 16 bytes longer, stay positive in 32 bits.
    static constexpr std::uint64_t largestFile = 0x7FFFFFFF - 16;

    explicit CTR9Doc(const DocumentPorts& ports);
    ~CTR9Doc() override;

    /// A new song, with the position at its top. False when the editor could not be set up, which has been shown.
    bool OnNewDocument();
    /// Reads a song file of any known kind.
    bool Load(const std::string& path);

    /// Opens a copy of unsaved work: the song gets its own file's name and kind back, and stays modified. The copy goes
    /// when the song is saved.
    bool Recover(const RecoverableSong& song);

    /// Writes the song to its file, in that file's kind; without a file the same as SaveAs. Undo is gone afterwards.
    /// False when it was not saved: why, and where the song as it was can be found, has been shown.
    bool Save();
    /// Asks for name and kind, then saves. False also when the user gives up.
    bool SaveAs();
    /// Saves under this name, as this kind from 1 to 6; both are the song's own from then on.
    bool Save(const std::string& path, std::uint8_t kind);
    /// Writes a file of this kind and changes nothing: name, kind, undo and the mark of unsaved changes stay. Why it
    /// was not written has been shown.
    bool SaveCopy(const std::string& path, std::uint8_t kind);
    /// Before the song goes, in the commands new, open, close and quit: asks whether to save a modified song. False
    /// when the song has to stay.
    bool SaveModified();
    /// What to call with the path of each file that the song was saved to.
    void OnSaved(std::function<void(const std::string&)> listener) { m_onSaved = std::move(listener); }
    /// Keeps a copy of unsaved work when one is due. About once a second; not from within a command.
    void KeepCopy();

    std::string beginTake() override;
    void endTake() override;

    /// Ends play, a take and step input, as the stop button does.
    void StopTransport();
    [[nodiscard]] bool IsRecording() const { return m_ports.transport.isRecording(); }

    void SetModifiedFlag(bool modified) override;
    [[nodiscard]] bool IsModified() const override { return m_modified; }
    /// Empty for a song that has no file.
    [[nodiscard]] const std::string& GetPathName() const noexcept { return m_path; }
    /// 0 none, 1 standard MIDI file of format 0, 2 of format 1, 3 ZP, 4 native, 5 native with waves, 6 player file.
    [[nodiscard]] std::uint8_t GetFileKind() const noexcept { return m_kind; }
    [[nodiscard]] CEditor& GetEditor() noexcept { return m_editor; }
    /// Grows with every change of the song, and with every new one.
    [[nodiscard]] std::uint64_t GetChangeCount() const noexcept { return m_changes; }

private:
    enum class Outcome { loaded, loadedInPart, notSupported, unreadable };

    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

    bool open(const std::string& file, const RecoverableSong* recovered);
    Outcome read(const std::string& path);
    Outcome readSong(std::vector<std::uint8_t>& buffer, bool wavesFollow);
    bool startNewSong();
    void handOver();
    void detachSong();

    [[nodiscard]] FileError write(const std::string& path, std::uint8_t kind);
    void tellFailure(const std::string& path, FileError error);
    [[nodiscard]] std::string whereTheWorkIs();
    [[nodiscard]] std::string shownName(const std::string& path) const;
    [[nodiscard]] SongRecord origin() const;
    void leaveCopies();
    void removeCopies();
    FileOps& disk() noexcept { return m_ports.disk ? *m_ports.disk : m_systemFiles; }

    DocumentPorts m_ports;
    SystemFiles m_systemFiles;
    std::uint64_t m_changes = 0;
    std::optional<std::uint64_t> m_givenUp; ///< the changes that the user said may go
    bool m_modified = false;
    CEditor m_editor;
    std::string m_path;
    std::string m_recoveredCopy; ///< that the song came from; empty for none
    std::function<void(const std::string&)> m_onSaved;
    FileError m_fileError = FileError::none;
    std::uint8_t m_kind = 0;
};

} // namespace tessaro
