// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jack_server.h"

#include "platform/recording_sink.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>

namespace tessaro {

namespace {

/// Null when the server takes no client for as long as a test waits.
jack_client_t* openClient(const std::string& server, const char* name)
{
    jack_client_t* client = nullptr;
    const auto options = static_cast<jack_options_t>(JackNoStartServer | JackServerName);
    waitFor([&] { return (client = jack_client_open(name, options, nullptr, server.c_str())) != nullptr; });
    return client;
}

/// Servers start one at a time: the first of a machine makes the registry that all share, and another one that starts
/// meanwhile may replace it.
class StartLock {
public:
    StartLock()
        : m_file(open((std::filesystem::temp_directory_path() / "tessaro-test-jack.lock").c_str(),
                      O_RDWR | O_CREAT | O_CLOEXEC, 0666))
    {
        if (m_file >= 0) flock(m_file, LOCK_EX);
    }
    ~StartLock()
    {
        if (m_file >= 0) close(m_file);
    }
    StartLock(const StartLock&) = delete;
    StartLock& operator=(const StartLock&) = delete;

private:
    const int m_file;
};

void silence()
{
    const int null = open("/dev/null", O_RDWR);
    dup2(null, STDOUT_FILENO);
    dup2(null, STDERR_FILENO);
}

} // namespace

bool JackServer::installed() { return access("/usr/bin/jackd", X_OK) == 0; }

JackServer::JackServer() : m_name("tessaro-test-" + std::to_string(getpid()))
{
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
}

// A machine has room for eight servers, and one that was killed keeps its place until another of its name has ended.
JackServer::~JackServer()
{
    if (m_killed) start();
    stop();
}

bool JackServer::start()
{
    const StartLock lock;
    m_killed = false;
    m_process = fork();
    if (m_process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        silence();
        // Synchronous: a period waits for its clients, so that a busy machine makes it late and not lossy.
        execl("/usr/bin/jackd", "jackd", "-S", "-n", m_name.c_str(), "-r", "-d", "dummy", "-r", "48000", "-p", "256",
              nullptr);
        _exit(127);
    }
    return m_process > 0 && waitFor([this] { return answers(); });
}

// In a process of its own, since the library keeps what it knows of a server for all clients of a process.
bool JackServer::answers() const
{
    const pid_t probe = fork();
    if (probe == 0) {
        silence();
        execl("/usr/bin/jack_lsp", "jack_lsp", "-s", m_name.c_str(), nullptr);
        _exit(127);
    }
    int status = 0;
    waitpid(probe, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void JackServer::kill()
{
    end(SIGKILL);
    m_killed = true;
}

void JackServer::stop() { end(SIGTERM); }

void JackServer::end(int signal)
{
    if (m_process <= 0) return;
    ::kill(m_process, signal);
    waitpid(m_process, nullptr, 0);
    m_process = -1;
}

JackListener::JackListener(const JackServer& server)
    : m_client(openClient(server.name(), "listener"))
    , m_events(20000)
    , m_bytes(200000)
{
    if (!m_client) return;
    m_in = jack_port_register(m_client, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    m_out = jack_port_register(m_client, "out", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    jack_set_process_callback(m_client, &JackListener::process, this);
    jack_set_xrun_callback(
        m_client, [](void* self) { return ++static_cast<JackListener*>(self)->m_overruns, 0; }, this);
    jack_activate(m_client);
}

JackListener::~JackListener()
{
    if (m_client) jack_client_close(m_client);
}

int JackListener::process(jack_nframes_t frames, void* self)
{
    auto& listener = *static_cast<JackListener*>(self);
    void* buffer = jack_port_get_buffer(listener.m_in, frames);
    jack_nframes_t first = 0;
    jack_time_t start = 0;
    jack_time_t next = 0;
    float length = 0;
    jack_get_cycle_times(listener.m_client, &first, &start, &next, &length);
    std::size_t count = listener.m_count.load();
    for (jack_nframes_t i = 0; i < jack_midi_get_event_count(buffer); ++i) {
        jack_midi_event_t event;
        jack_midi_event_get(&event, buffer, i);
        const std::size_t begin = count == 0 ? 0 : listener.m_events[count - 1].end;
        if (count == listener.m_events.size() || begin + event.size > listener.m_bytes.size()) break;
        std::copy_n(event.buffer, event.size, listener.m_bytes.begin() + static_cast<std::ptrdiff_t>(begin));
        const double place = static_cast<double>(event.time) / frames;
        listener.m_events[count++] = {static_cast<double>(start) + place * static_cast<double>(length),
                                      begin + event.size};
    }
    listener.m_count.store(count);
    listener.playKey(frames);
    return 0;
}

void JackListener::playKey(jack_nframes_t frames)
{
    void* buffer = jack_port_get_buffer(m_out, frames);
    jack_midi_clear_buffer(buffer);
    const unsigned char note[] = {0x90, m_key.exchange(0), 100};
    if (note[1] != 0) jack_midi_event_write(buffer, 0, note, sizeof note);
}

std::vector<unsigned char> JackListener::stream() const
{
    const auto all = events();
    const std::size_t end = all.empty() ? 0 : all.back().end;
    return {m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(end)};
}

} // namespace tessaro
