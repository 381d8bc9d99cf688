// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Marks what libtessaro offers to the programs and plug-ins that link it; everything else stays hidden.
#define TESSARO_API __attribute__((visibility("default")))
