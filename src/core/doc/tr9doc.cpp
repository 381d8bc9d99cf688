// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/tr9doc.h"

#include "core/doc/recovery.h"

#include <new>
#include <vector>

namespace tessaro {

namespace {

constexpr std::size_t bufferTail = 16;
constexpr std::uint8_t nativeWithWaves = 5;

EditorPorts editorPorts(CTR9Doc& doc, const DocumentPorts& p)
{
    return {doc, p.files, p.user, p.progress, p.transport, p.waveLengths, p.waveOutput, p.score, &p.strings};
}

} // namespace

CTR9Doc::CTR9Doc(const DocumentPorts& ports) : m_ports(ports), m_editor(editorPorts(*this, ports))
{
    m_editor.addObserver(this);
}

CTR9Doc::~CTR9Doc()
{
    detachSong();
    m_editor.removeObserver(this);
}

void CTR9Doc::onHint(const HintObserver*, int code, CEditor*)
{
    const bool ofDevices = code == hint::sysSetupChng || code == hint::allTrkPort;
    if (!ofDevices) ++m_changes;
}

void CTR9Doc::SetModifiedFlag(bool modified)
{
    if (modified) ++m_changes;
    if (modified == m_modified) return;
    m_modified = modified;
    m_ports.windows.titleChanged();
}

bool CTR9Doc::OnNewDocument()
{
    m_ports.windows.closeChildFrames();
    detachSong();
    const bool made = startNewSong();
    handOver();
    m_ports.windows.songToTop();
    return made;
}

bool CTR9Doc::Load(const std::string& path) { return open(path, nullptr); }

bool CTR9Doc::Recover(const RecoverableSong& song) { return open(song.copy, &song); }

bool CTR9Doc::open(const std::string& file, const RecoverableSong* recovered)
{
    m_ports.windows.closeChildFrames();
    detachSong();
    m_editor.SetPrgDlg();
    const Outcome outcome = read(file);
    const bool loaded = outcome == Outcome::loaded || outcome == Outcome::loadedInPart;
    if (loaded) {
        m_path = recovered ? recovered->record.path : file;
        if (recovered) m_kind = recovered->record.kind;
        m_recoveredCopy = recovered ? file : std::string();
        m_modified = recovered != nullptr;
        m_editor.SetModifyLock(m_modified);
    } else {
        startNewSong();
    }
    handOver();
    m_editor.EndPrgDlg();

    if (outcome == Outcome::loadedInPart) m_ports.user.status(m_ports.strings(TextId::songPartsLeftOut));
    if (outcome == Outcome::notSupported) m_ports.user.message(TextId::formatNotSupported, MessageKind::error);
    if (outcome == Outcome::unreadable) m_ports.user.message(textOf(m_fileError), MessageKind::error);
    return loaded;
}

CTR9Doc::Outcome CTR9Doc::read(const std::string& path)
{
    try {
        const std::uint64_t songLength = m_ports.files.songLength(path);
        FileContents file = readFile(path, largestFile, songLength);
        m_fileError = file.error;
        if (file.error != FileError::none) return Outcome::unreadable;
        const bool hasWaves = file.goesOn;
        const Outcome outcome = readSong(file.bytes, hasWaves);
        file = {};
        if (outcome != Outcome::loaded && outcome != Outcome::loadedInPart) return outcome;
        m_editor.InitTimeInfo();
        m_editor.BlkSize(m_kind);
        m_editor.PackSysex();
        if (hasWaves) {
            if (!m_ports.files.loadWaves(path, songLength, m_editor)) return Outcome::notSupported;
            m_kind = nativeWithWaves;
        }
        m_editor.BlkSizeWave();
        return outcome;
    } catch (const std::bad_alloc&) {
        m_fileError = FileError::tooLarge;
        return Outcome::unreadable;
    }
}

CTR9Doc::Outcome CTR9Doc::readSong(std::vector<std::uint8_t>& buffer, bool wavesFollow)
{
    const auto length = static_cast<std::uint32_t>(buffer.size());
    buffer.resize(buffer.size() + bufferTail);
    _EDT_FILE file = m_ports.files.recognise(buffer, length);
    if (file.kind == 0) return Outcome::notSupported;
    file.wavesFollow = wavesFollow;
    if (!m_editor.InitEditor()) {
        m_ports.user.message(TextId::editorInitializeError, MessageKind::error);
        return Outcome::notSupported;
    }
    m_kind = file.kind;
    switch (m_editor.Load(file)) {
    case LoadResult::complete: return Outcome::loaded;
    case LoadResult::partial: return Outcome::loadedInPart;
    default: return Outcome::notSupported;
    }
}

bool CTR9Doc::startNewSong()
{
    m_kind = 0;
    m_path.clear();
    m_recoveredCopy.clear();
    m_modified = false;
    if (m_editor.InitEditor()) return true;
    m_ports.user.message(TextId::editorInitializeError, MessageKind::error);
    return false;
}

void CTR9Doc::detachSong()
{
    StopTransport();
    leaveCopies();
    m_ports.transport.bindSong(nullptr);
}

void CTR9Doc::StopTransport()
{
    Transport& transport = m_ports.transport;
    if (transport.isPlaying() || transport.isRecording()) transport.halt();
}

void CTR9Doc::handOver()
{
    ++m_changes;
    m_ports.windows.titleChanged();
    m_ports.windows.songReplaced();
    m_ports.transport.bindSong(&m_editor);
    m_editor.SetTrkOnOff();
}

} // namespace tessaro
