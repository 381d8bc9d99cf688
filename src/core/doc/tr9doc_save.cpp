// SPDX-License-Identifier: GPL-3.0-or-later
// The document's saving: to its file, and the copies of what is not saved yet.
#include "base/replacing_file.h"
#include "base/text.h"
#include "core/doc/autosave.h"
#include "core/doc/recovery.h"
#include "core/doc/tr9doc.h"

#include <exception>
#include <filesystem>

namespace tessaro {

namespace {

constexpr std::uint8_t nativeKind = 4;

std::string filled(std::string_view pattern, std::string_view value, std::string_view mark = "%1")
{
    std::string text(pattern);
    if (const std::size_t at = text.find(mark); at != std::string::npos) text.replace(at, mark.size(), value);
    return text;
}

std::string withExtension(const std::string& path, std::uint8_t kind)
{
    if (std::filesystem::path(path).has_extension()) return path;
    return path + (kind == 4 || kind == 5 ? ".TQM" : ".MID");
}

} // namespace

bool CTR9Doc::Save()
{
    StopTransport();
    return m_kind == 0 || m_path.empty() ? SaveAs() : Save(m_path, m_kind);
}

bool CTR9Doc::SaveAs()
{
    StopTransport();
    SaveChoice proposed{m_path, m_kind == 0 ? nativeKind : m_kind};
    while (const auto choice = m_ports.windows.askSaveName(proposed)) {
        const std::string path = withExtension(choice->path, choice->kind);
        // The dialog has asked about the name that was typed, not about this one.
        if (struct stat status{}; path == choice->path || disk().stat(path, status) != 0
                                  || m_ports.user.ask(filled(m_ports.strings(TextId::askReplaceFile), shownName(path))))
            return Save(path, choice->kind);
        proposed = *choice;
    }
    return false;
}

bool CTR9Doc::Save(const std::string& path, std::uint8_t kind)
{
    StopTransport();
    m_editor.InitUndoNode();
    m_editor.RemoveScratch();
    m_editor.RemoveScratchScr();
    m_editor.SetPrgDlg();
    const FileError error = write(path, kind);
    m_editor.EndPrgDlg();
    if (error != FileError::none) {
        // The history that could have led back to the saved song is gone.
        if (m_modified) m_editor.SetModifyLock(true);
        tellFailure(path, error);
        return false;
    }
    m_path = path;
    m_kind = kind;
    m_modified = false;
    m_editor.SetModifyLock(false);
    removeCopies();
    if (m_onSaved) m_onSaved(path);
    m_ports.windows.titleChanged();
    return true;
}

bool CTR9Doc::SaveCopy(const std::string& path, std::uint8_t kind)
{
    StopTransport();
    m_editor.SetPrgDlg();
    const FileError error = write(path, kind);
    m_editor.EndPrgDlg();
    if (error == FileError::none) return true;
    m_ports.user.sentence(filled(filled(m_ports.strings(TextId::exportFailed), shownName(path), "%1"),
                                 m_ports.strings(causeOf(error)), "%2"),
                          MessageKind::error);
    return false;
}

FileError CTR9Doc::write(const std::string& path, std::uint8_t kind)
{
    try {
        ReplacingFile file(path, disk());
        if (file.error() != FileError::none) return file.error();
        if (m_ports.files.save(kind, m_editor, file)) return file.commit();
        return file.error() != FileError::none ? file.error() : FileError::failed;
    } catch (const std::exception&) { // memory is out, or a sound file cannot be looked at
        return FileError::failed;
    }
}

void CTR9Doc::tellFailure(const std::string& path, FileError error)
{
    const std::string cause(m_ports.strings(causeOf(error)));
    m_ports.user.sentence(shownName(path) + ": " + cause + '\n' + whereTheWorkIs(), MessageKind::error);
    m_ports.user.message(TextId::saveFailed, MessageKind::error);
}

/// A sentence; where the song's file is gone a copy of the work is made.
std::string CTR9Doc::whereTheWorkIs()
{
    struct stat status {};
    if (!m_path.empty() && disk().stat(m_path, status) == 0)
        return filled(m_ports.strings(TextId::songStillAt), toUtf8(m_path));
    const std::string copy =
        m_ports.autosave ? m_ports.autosave->keepNow(m_editor, origin(), m_changes) : std::string();
    if (copy.empty()) return std::string(m_ports.strings(TextId::workNotKept));
    return filled(m_ports.strings(TextId::workKeptAt), toUtf8(copy));
}

bool CTR9Doc::SaveModified()
{
    StopTransport();
    if (!m_modified) return true;
    switch (m_ports.windows.askSaveChanges(shownName(m_path))) {
    case SaveAnswer::save: return SaveAs();
    case SaveAnswer::discard: m_givenUp = m_changes; return true;
    default: return false;
    }
}

std::string CTR9Doc::shownName(const std::string& path) const
{
    if (path.empty()) return std::string(m_ports.strings(TextId::songUntitled));
    return toUtf8(std::filesystem::path(path).filename().string());
}

SongRecord CTR9Doc::origin() const
{
    SongRecord record;
    std::error_code error;
    if (!m_path.empty()) record.path = std::filesystem::absolute(m_path, error).string();
    if (error) record.path = m_path;
    record.kind = m_kind;
    return record;
}

void CTR9Doc::KeepCopy()
{
    if (!m_ports.autosave) return;
    if (const bool whole = !m_editor.IsUndoOpen() && !m_editor.IsPrgDlg(); whole && m_modified)
        m_ports.autosave->tick(m_editor, origin(), m_changes);
    else if (whole)
        m_ports.autosave->drop();
    if (const FileError error = m_ports.autosave->takeError(); error != FileError::none)
        m_ports.user.status(filled(m_ports.strings(TextId::copyFailed), m_ports.strings(textOf(error))));
}

std::string CTR9Doc::beginTake()
{
    if (!m_ports.autosave || m_editor.IsUndoOpen() || m_editor.IsPrgDlg()) return {};
    return m_ports.autosave->beginTake(m_editor, origin(), m_changes);
}

void CTR9Doc::endTake()
{
    if (!m_ports.autosave) return;
    if (m_modified)
        m_ports.autosave->endTake(m_editor, origin(), m_changes);
    else
        m_ports.autosave->drop();
}

/// The song goes. Unless it is saved, or the user said that it may go, a copy of its last state stays.
void CTR9Doc::leaveCopies()
{
    if (!m_ports.autosave) return;
    if (!m_modified || m_givenUp == m_changes)
        m_ports.autosave->drop();
    else
        m_ports.autosave->keepNow(m_editor, origin(), m_changes);
    m_ports.autosave->nextSong();
}

/// The song is safe in its file.
void CTR9Doc::removeCopies()
{
    if (m_ports.autosave) m_ports.autosave->drop();
    if (!m_recoveredCopy.empty()) removeRecoveryCopy(m_recoveredCopy);
    m_recoveredCopy.clear();
}

} // namespace tessaro
