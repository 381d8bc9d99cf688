// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"
#include "base/strings.h"
#include "core/model/records.h"
#include "files/smf/open_notes.h"
#include "files/smf/smf_clock.h"
#include "files/smf/smf_target.h"

#include <array>
#include <cstdint>
#include <span>

namespace tessaro {

class CEditor;

/// The reader of a standard MIDI file, made for one load: it turns the bytes of the file into tracks, blocks and
/// events of the editor's fresh song. Notes and note-offs become notes with gate times, channels become tracks,
/// what has no place in the song is dropped. The time it takes is in proportion to the file.
///
/// All reads stay within the file, whatever its lengths say. Operations answer false when the load has failed;
/// the song is then unusable. Main thread only.
class CSmf {
public:
    CSmf(CEditor& editor, const Strings& strings);
    CSmf(const CSmf&) = delete;
    CSmf& operator=(const CSmf&) = delete;

    bool Load(const _EDT_FILE& file);
    /// After a load that succeeded: parts of the file were left out, because no track was free for them.
    [[nodiscard]] bool isPartial() const noexcept { return m_partial; }

private:
    /// Who an event belongs to: 0 is the master track, 1 to 16 are channels.
    using Target = std::uint8_t;
    using LoadEvnt = bool (CSmf::*)();
    struct Meta {
        std::uint8_t type = 0;
        ByteReader::Bytes body;
    };

    bool LoadSmf0();
    bool LoadSmf0Evnt();
    bool LoadSmf0Meta();
    bool LoadSmf0NewBlk();

    bool LoadZp();
    bool LoadZpih();
    bool LoadZpkm();
    bool LoadZpEvnt();
    bool loadZpChunk(std::uint32_t offset, std::uint32_t length, TextId text);

    bool LoadSmf1();
    bool LoadSmf1Trk();
    bool LoadSmf1Evnt();
    bool LoadSmf1Meta();
    bool LoadSmf1NewBlk();
    [[nodiscard]] Target Get1stCh() const;
    [[nodiscard]] bool tracksLeft() const noexcept { return m_nextTrk < trackCount; }
    void pairRest();
    bool skipEvnt();
    void setPorts();

    // What the formats share.
    bool loadChunk(LoadEvnt load, std::uint32_t progressMask);
    void startChunk(std::uint32_t length);
    bool readEvntStart();
    void takeChannelStatus();
    bool LoadChannelEvnt();
    bool LoadNoteOff();
    bool LoadNoteOn();
    bool Load3();
    bool Load2();
    bool LoadSys();
    bool readMeta(Meta& meta);
    void closeNote(std::uint8_t pitch) { m_open.close(status::channel(m_status), pitch, m_clock); }
    bool needBlk();
    bool newBlk(int trk);
    CEvnt* addEvnt();
    CEvnt* addShort();
    bool addMeta(const Meta& meta);
    void tellUnreadable();

    [[nodiscard]] SmfTarget& target() noexcept { return m_targets[m_target]; }

    CEditor& m_editor;
    const Strings& m_strings;
    _EDT_FILE m_file;
    ByteReader m_in;
    std::uint64_t m_chunkEnd = 0;
    SmfClock m_clock;
    std::uint8_t m_status = 0;
    std::uint8_t m_running = 0;
    Target m_target = 0;
    bool m_badStatus = false;
    bool m_partial = false;
    std::array<SmfTarget, 17> m_targets; ///< master track, channels 1 to 16
    OpenNotes m_open;
    std::array<POSITION, 2> m_sorted{}; ///< places reached in the master's and track 1's events

    // Format 1.
    int m_nextTrk = 1;
    bool m_firstChunk = true;
    Target m_firstCh = 1;
    int m_port = -1; ///< of the chunk
};

} // namespace tessaro
