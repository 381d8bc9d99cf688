// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ports/app_windows.h"
#include "core/ports/devices.h"
#include "core/ports/document.h"
#include "core/ports/hint_observer.h"
#include "core/ports/progress.h"
#include "core/ports/score_links.h"
#include "core/ports/settings_store.h"
#include "core/ports/song_files.h"
#include "core/ports/take_keeper.h"
#include "core/ports/transport.h"
#include "core/ports/user.h"
#include "core/ports/wave_lengths.h"
#include "core/ports/wave_output.h"

#include <algorithm>
#include <limits>

namespace tessaro {

AppWindows::~AppWindows() = default;
DevicePort::~DevicePort() = default;
DocumentPort::~DocumentPort() = default;
HintObserver::~HintObserver() = default;
ProgressPort::~ProgressPort() = default;
ScoreLinks::~ScoreLinks() = default;
SettingsStore::~SettingsStore() = default;
SongFiles::~SongFiles() = default;
std::uint64_t SongFiles::songLength(const std::string&) { return std::numeric_limits<std::uint64_t>::max(); }
bool SongFiles::loadWaves(const std::string&, std::uint64_t, CEditor&) { return true; }
TakeKeeper::~TakeKeeper() = default;
Transport::~Transport() = default;
UserPort::~UserPort() = default;
WaveLengths::~WaveLengths() = default;
WaveOutput::~WaveOutput() = default;

NullTransport::NullTransport() { std::fill(std::begin(m_switch), std::end(m_switch), true); }

} // namespace tessaro
