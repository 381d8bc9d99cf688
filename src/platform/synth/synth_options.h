// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tessaro {

/// How the built-in synth is set up.
struct SynthOptions {
    std::string soundFont{}; ///< file name; empty: the first one found in the usual folders
    unsigned rate = 48000;   ///< frames a second, 8000 to 96000
    double gain = 0.4;       ///< 0 to 10
    bool reverb = true;
    bool chorus = true;
};

} // namespace tessaro
