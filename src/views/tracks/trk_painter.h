// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/blk_pictures.h"
#include "views/tracks/blk_shares.h"
#include "views/tracks/trk_geometry.h"

#include <QFont>
#include <QImage>
#include <QPalette>
#include <QPixmap>
#include <QStaticText>

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class QPainter;

namespace tessaro {

class BlkGesture;
class CEditor;
class Icons;
class TrkBlks;
class TrkSelection;

/// A block under recording, whose end is the place that the song has come to.
struct TrkTake {
    int track = 0;
    const CBlk* blk = nullptr;
    std::uint32_t end = 0;
};

/// Draws the time line of the track window into any painter: ruler, rows, blocks with their notes, loop, play position
/// and what a gesture shows. What it costs depends on what the area shows and not on the song. Ticks and pixels of the
/// window. Borrows all.
class TrkPainter {
public:
    struct Parts {
        CEditor& editor;
        const TrkGeometry& geometry;
        TrkBlks& blks;
        const TrkSelection& selection;
        const BlkGesture& gesture;
        const Icons& icons;
    };
    /// What the area is painted with.
    struct Look {
        const QPalette& palette;
        const QFont& font;
        double pixelRatio = 1;
    };

    explicit TrkPainter(const Parts& parts);

    // What is shown apart from the song

    std::uint32_t position = 0;
    std::uint32_t location = 0; ///< where a click has put the song
    bool loopOn = false;
    int currentTrack = 1;
    std::vector<TrkTake> takes;
    std::array<bool, trackCount> sounding{};
    std::array<int, 16> colours{}; ///< for each of sixteen tracks the number of another one's colour; 0 for its own

    void paint(QPainter& painter, const QRect& area, const Look& look);
    /// Of the last painting: some pictures are not complete, another painting has to follow.
    [[nodiscard]] bool unfinished() const { return m_pictures.unfinished(); }

    /// A hint of the editor: constant time for events.
    void follow(int code, const CEditor& editor);
    void songReplaced();
    void selectionChanged() { m_siblingsStale = true; }
    /// How many blocks show the events of this one.
    [[nodiscard]] int links(const CBlk& blk);
    /// Whether others do, as far as that is known by now.
    [[nodiscard]] bool isLinked(const CBlk& blk) const { return m_shares.isShared(blk.GetRealBlk()); }
    /// Whether no track shows a block.
    [[nodiscard]] bool isEmpty();

    /// The columns that show a position.
    [[nodiscard]] QRect strip(std::uint32_t tick) const;

private:
    struct Blk {
        const CBlk& blk;
        QRect place; ///< of the window
        QColor colour;
        bool selected = false;
        bool linked = false;
        bool wave = false;
    };

    /// What a block's name looks like, so that it is shaped once.
    struct Name {
        QStaticText text;
        int width = 0;
    };

    void prepare(const Look& look);
    [[nodiscard]] const Name& nameOf(const CBlk& blk);
    void paintRows(QPainter& painter, const QRect& area, const Look& look);
    void paintBlks(QPainter& painter, const QRect& area, const Look& look);
    void paintBlk(QPainter& painter, const Blk& blk, const QRect& area, const Look& look);
    void paintName(QPainter& painter, const Blk& blk, const QColor& plate);
    /// Of notes, and of what they stand on; both opaque.
    struct Inks {
        QColor note;
        QColor plate;
    };
    void paintNotes(QPainter& painter, const CBlk& blk, const QRect& body, const QRect& area, const Inks& inks,
                    double pixelRatio);
    void paintTake(QPainter& painter, const TrkTake& take, const QRect& area, const Look& look);
    void paintGesture(QPainter& painter, const QRect& area, const Look& look) const;
    void paintRuler(QPainter& painter, const QRect& area, const Look& look) const;
    void paintLoop(QPainter& painter, const Look& look) const;
    void paintPosition(QPainter& painter, const Look& look) const;
    void refreshSiblings();
    [[nodiscard]] QColor colourOf(int track, const Look& look) const;

    Parts m_parts;
    BlkPictures m_pictures;
    BlkShares m_shares;
    std::unordered_set<const CRealBlk*> m_siblings; ///< shown by a selected block and others
    QImage m_notes;                                 ///< where the notes of a block are drawn
    QFont m_small;
    QPixmap m_chain; ///< the mark of linked blocks
    QColor m_ink;    ///< of names and chains
    std::unordered_map<std::string, Name> m_names;
    bool m_siblingsStale = true;
};

} // namespace tessaro
