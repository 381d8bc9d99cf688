// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/midi/alsa_calls.h"

namespace tessaro {

namespace {

void ignoreError(const char*, int, const char*, int, const char*, ...) {}

} // namespace

void silenceAlsa() { snd_lib_error_set_handler(&ignoreError); }

AlsaCalls alsaLibraryCalls()
{
    silenceAlsa();
    return {.open = &snd_seq_open,
            .close = &snd_seq_close,
            .setClientName = &snd_seq_set_client_name,
            .clientId = &snd_seq_client_id,
            .createPort = &snd_seq_create_simple_port,
            .deletePort = &snd_seq_delete_simple_port,
            .connectFrom = &snd_seq_connect_from,
            .connectTo = &snd_seq_connect_to,
            .nextClient = &snd_seq_query_next_client,
            .nextPort = &snd_seq_query_next_port,
            .output = &snd_seq_event_output_direct,
            .input = &snd_seq_event_input,
            .pollDescriptors = &snd_seq_poll_descriptors};
}

} // namespace tessaro
