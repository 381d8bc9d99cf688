// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <memory>

namespace tessaro {

class FileCommands;
class RecoveryList;
class RecoveryPanel;
class StatusLine;
struct FrameParts;

/// Offers the songs that were not saved in the strip over the tracks, and opens or discards the chosen one.
class RecoveryControl {
public:
    struct Places {
        RecoveryPanel& panel;
        FileCommands& files;
        StatusLine& status;
    };
    /// Everything outlives this object.
    RecoveryControl(const FrameParts& parts, const Places& places);
    ~RecoveryControl();

    /// Nothing is offered any more.
    std::function<void()> onDone;

    /// Nothing for an empty list.
    void offer(std::unique_ptr<RecoveryList> songs);
    void retranslate();

private:
    void open(std::size_t index);
    void discard(std::size_t index);
    void show();

    const FrameParts& m_parts;
    const Places m_places;
    std::unique_ptr<RecoveryList> m_songs; ///< null when nothing is offered
};

} // namespace tessaro
