// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/rt_audio_out.h"

#include <RtAudio.h>
#include <pthread.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <thread>
#include <utility>

namespace tessaro {

namespace {

constexpr unsigned wantedRate = 48000;
constexpr unsigned wantedPeriod = 256;
constexpr auto closingTime = std::chrono::seconds(2);

RtAudio::Api apiOf(SoundService service)
{
    return service == SoundService::pulse ? RtAudio::LINUX_PULSE : RtAudio::LINUX_ALSA;
}

std::unique_ptr<RtAudio> makeApi(SoundService service)
{
    auto api = std::make_unique<RtAudio>(apiOf(service));
    api->showWarnings(false);
    return api->getCurrentApi() == apiOf(service) ? std::move(api) : nullptr;
}

unsigned bestRate(const RtAudio::DeviceInfo& device)
{
    const std::vector<unsigned>& rates = device.sampleRates;
    if (rates.empty() || std::find(rates.begin(), rates.end(), wantedRate) != rates.end()) return wantedRate;
    return device.preferredSampleRate ? device.preferredSampleRate : rates.back();
}

} // namespace

/// All that the callback touches. It outlives the RtAudioOut when closing takes long.
struct RtAudioOut::Stream {
    std::unique_ptr<RtAudio> api;
    std::shared_ptr<AudioTap> tap;
    unsigned rate = wantedRate;
    unsigned period = wantedPeriod;
    bool prioritised = false; ///< the callback's

    // RtAudio would do it too, but prints what came of it.
    static void askForPriority() noexcept
    {
        sched_param priority{};
        priority.sched_priority = 10; // granted or not
        pthread_setschedparam(pthread_self(), SCHED_RR, &priority);
    }

    static int callback(void* out, void*, unsigned frames, double, RtAudioStreamStatus, void* self) noexcept
    {
        auto* samples = static_cast<float*>(out);
        auto& stream = *static_cast<Stream*>(self);
        if (!std::exchange(stream.prioritised, true)) askForPriority();
        stream.tap->pull(samples, samples + frames, frames);
        return 0;
    }

    bool open()
    {
        if (api->getDeviceCount() == 0) return false;
        const unsigned device = api->getDefaultOutputDevice();
        const RtAudio::DeviceInfo info = api->getDeviceInfo(device);
        if (!info.probed || info.outputChannels == 0) return false;
        rate = bestRate(info);
        RtAudio::StreamParameters parameters;
        parameters.deviceId = device;
        parameters.nChannels = 2;
        RtAudio::StreamOptions options;
        options.flags = RTAUDIO_NONINTERLEAVED;
        options.numberOfBuffers = 3;
        options.streamName = "Tessaro";
        api->openStream(&parameters, nullptr, RTAUDIO_FLOAT32, rate, &period, &Stream::callback, this, &options);
        api->startStream();
        return true;
    }

    // Dropping what is still buffered closes faster than playing it out.
    void close() noexcept
    {
        try {
            if (api->isStreamRunning()) api->abortStream();
            if (api->isStreamOpen()) api->closeStream();
        } catch (const RtAudioError&) {
            // The device is gone; there is nothing left to close.
        }
    }
};

std::unique_ptr<AudioOut> RtAudioOut::open(SoundService service, const Clock& clock)
{
    try {
        auto stream = std::make_shared<Stream>();
        stream->api = makeApi(service);
        if (!stream->api) return nullptr;
        stream->tap = std::make_shared<AudioTap>(clock);
        if (!stream->open()) return nullptr;
        return std::unique_ptr<AudioOut>(new RtAudioOut(std::move(stream)));
    } catch (const RtAudioError&) {
        return nullptr;
    }
}

RtAudioOut::RtAudioOut(std::shared_ptr<Stream> stream)
    : AudioOut(stream->tap, stream->rate, stream->period)
    , m_stream(std::move(stream))
{
}

RtAudioOut::~RtAudioOut()
{
    tap().detach();
    std::promise<void> closed;
    std::future<void> done = closed.get_future();
    std::thread closer([stream = std::move(m_stream), closed = std::move(closed)]() mutable {
        stream->close();
        stream.reset();
        closed.set_value();
    });
    if (done.wait_for(closingTime) == std::future_status::ready)
        closer.join();
    else
        closer.detach();
}

SoundDevices listSoundDevices()
{
    SoundDevices found;
    for (const SoundService service : {SoundService::pulse, SoundService::alsa}) {
        try {
            const std::unique_ptr<RtAudio> api = makeApi(service);
            const unsigned count = api ? api->getDeviceCount() : 0;
            for (unsigned i = 0; i < count; ++i) {
                const RtAudio::DeviceInfo info = api->getDeviceInfo(i);
                if (info.probed && info.outputChannels > 0) found.outputs.push_back(info.name);
                if (info.probed && info.inputChannels > 0) found.inputs.push_back(info.name);
            }
        } catch (const RtAudioError&) {
            // A service that breaks off tells what it told.
        }
    }
    return found;
}

} // namespace tessaro
