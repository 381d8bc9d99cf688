// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <alsa/asoundlib.h>

namespace tessaro {

/// The calls of the ALSA sequencer that we make, as a table, so that a test can stand in for the kernel. Meaning
/// and results are those of the library's functions.
struct AlsaCalls {
    int (*open)(snd_seq_t** seq, const char* name, int streams, int mode);
    int (*close)(snd_seq_t* seq);
    int (*setClientName)(snd_seq_t* seq, const char* name);
    int (*clientId)(snd_seq_t* seq);
    int (*createPort)(snd_seq_t* seq, const char* name, unsigned capabilities, unsigned type);
    int (*deletePort)(snd_seq_t* seq, int port);
    int (*connectFrom)(snd_seq_t* seq, int port, int client, int otherPort);
    int (*connectTo)(snd_seq_t* seq, int port, int client, int otherPort);
    int (*nextClient)(snd_seq_t* seq, snd_seq_client_info_t* info);
    int (*nextPort)(snd_seq_t* seq, snd_seq_port_info_t* info);
    int (*output)(snd_seq_t* seq, snd_seq_event_t* event);
    int (*input)(snd_seq_t* seq, snd_seq_event_t** event);
    int (*pollDescriptors)(snd_seq_t* seq, pollfd* descriptors, unsigned space, short events);
};

/// The real ones. They print nothing.
[[nodiscard]] AlsaCalls alsaLibraryCalls();
/// Keeps the library from printing its troubles.
void silenceAlsa();

} // namespace tessaro
