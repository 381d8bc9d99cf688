// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/clipboard/song_clipboard.h"

#include "core/edit/editor.h"
#include "core/edit/percent.h"
#include "core/edit/undo_part.h"
#include "core/model/meta.h"
#include "core/model/poslist.h"
#include "core/model/tick.h"
#include "files/clip/blk_clip_reader.h"
#include "files/clip/clip_writer.h"
#include "files/clip/evnt_clip_reader.h"
#include "views/editors/evnt_kinds.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>

namespace tessaro {

namespace {

void put(SongClipboard::Format format, const ClipWriter::Image& image)
{
    auto* data = new QMimeData; // the clipboard owns it
    data->setData(SongClipboard::name(format),
                  {reinterpret_cast<const char*>(image.data()), static_cast<qsizetype>(image.size())});
    QGuiApplication::clipboard()->setMimeData(data);
}

QByteArray held(SongClipboard::Format format)
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data ? data->data(SongClipboard::name(format)) : QByteArray();
}

std::span<const std::uint8_t> bytesOf(const QByteArray& image)
{
    return {reinterpret_cast<const std::uint8_t*>(image.constData()), static_cast<std::size_t>(image.size())};
}

bool isMasters(const POSITION trk) { return Song::numberOf(trk) == 0; }

bool isScoreLink(const _EDT_EVNT& rec)
{
    return rec.status == status::metaEvent && rec.metaType == meta::sequencer
        && isScoreLinkBody({rec.data, rec.szData});
}

/// All events of an image; none when it is broken. They borrow from it.
std::vector<_EDT_EVNT> readEvnts(const QByteArray& image, ClipKind kind)
{
    EvntClipReader reader(bytesOf(image));
    std::vector<_EDT_EVNT> records;
    if (!reader.ChkTr9c(kind)) return records;
    for (_EDT_EVNT rec; reader.GetEvntTr9c(rec);)
        if (!isScoreLink(rec)) records.push_back(rec);
    if (!reader.ok()) records.clear();
    return records;
}

/// Null on a refusal.
POSITION insert(CEditor& editor, const BlkRef& into, const _EDT_EVNT& rec)
{
    POSITION evnt = nullptr;
    if (!editor.InsEvnt(into.trk, into.blk, rec, evnt)) return nullptr;
    editor.history().SetUndoEvntIns(into.trk, into.blk, evnt);
    return evnt;
}

/// For the event that reaches farthest.
void grow(CEditor& editor, std::span<const EvntRef> made)
{
    const auto endOf = [](const EvntRef& ref) { return tick::later(timeOf(ref), evntOf(ref).GetGateTime()); };
    const auto last = std::ranges::max_element(made, {}, endOf);
    if (last != made.end()) editor.ChkBlkReSize(last->trk, last->blk, last->evnt);
}

} // namespace

QString SongClipboard::name(Format format)
{
    switch (format) {
    case Format::blks: return QStringLiteral("TR9BLK");
    case Format::styleBlks: return QStringLiteral("TR9STYLEBLK");
    case Format::evnts: return QStringLiteral("TR9EVNT");
    case Format::mstrEvnts: return QStringLiteral("TR9MSTREVNT");
    }
    return {};
}

bool SongClipboard::holds(Format format) const
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasFormat(name(format));
}

bool SongClipboard::copyEvnts(std::span<const EvntRef> refs)
{
    if (refs.empty()) return false;
    const bool masters = isMasters(refs.front().trk);
    const auto isOfThese = [masters](const EvntRef& ref) { return isMasters(ref.trk) == masters; };
    if (!std::all_of(refs.begin(), refs.end(), isOfThese)) return false;

    const std::uint32_t first = timeOf(refs.front());
    CPosList places;
    for (const EvntRef& ref : refs)
        places.NewAddTail()->Set(ref.trk, ref.blk, ref.evnt, std::max(timeOf(ref), first) - first);
    ClipWriter::Image image;
    if (!ClipWriter(m_editor).SetClipTr9(image, places, masters ? ClipKind::mstrEvnts : ClipKind::evnts)) return false;
    put(masters ? Format::mstrEvnts : Format::evnts, image);
    return true;
}

bool SongClipboard::copyBlks(std::span<const BlkRef> blks)
{
    ClipWriter::Image image;
    if (blks.empty() || !ClipWriter(m_editor).SetClipTr9_blk(image, blks)) return false;
    put(Format::blks, image);
    return true;
}

std::vector<EvntRef> SongClipboard::pasteEvnts(int track, std::uint32_t time, const Target& target)
{
    std::vector<EvntRef> pasted;
    const bool masters = track == 0;
    const QByteArray image = held(masters ? Format::mstrEvnts : Format::evnts);
    std::vector<_EDT_EVNT> records = readEvnts(image, masters ? ClipKind::mstrEvnts : ClipKind::evnts);
    const CTrk* trk = m_editor.song().trk(track);
    if (!trk) return pasted;
    const std::uint8_t type = trk->GetType() == trktype::unused ? trktype::midi : trk->GetType();
    std::erase_if(records, [=](const _EDT_EVNT& rec) { return !CEditor::IsInsEnable(track, type, rec); });
    if (records.empty()) return pasted;

    const UndoPart step(m_editor, std::string(m_strings(TextId::undoEventPaste)));
    const BlkRef into = step ? target() : BlkRef{};
    if (!into.blk) return pasted;
    Percent bar(m_editor, records.size());
    for (_EDT_EVNT& rec : records) {
        bar.step();
        rec.time = tick::later(time, rec.time);
        const POSITION evnt = insert(m_editor, into, rec);
        if (!evnt) continue;
        dropReplaced(pasted, *List<CEvnt>::get(evnt));
        pasted.push_back({into.trk, into.blk, evnt});
    }
    grow(m_editor, pasted);
    return pasted;
}

std::vector<BlkRef> SongClipboard::pasteBlks(int track, std::uint32_t time)
{
    const QByteArray image = held(Format::blks);
    BlkClipReader reader(m_editor, m_strings, bytesOf(image));
    reader.ClipPaste_blk(time, track);
    return reader.placed();
}

} // namespace tessaro
