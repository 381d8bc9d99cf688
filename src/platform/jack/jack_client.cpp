// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jack/jack_client.h"

#include <algorithm>
#include <utility>

namespace tessaro {

namespace {

constexpr const char* clientName = "Tessaro";

void quiet(const char*) {}

} // namespace

JackPart::~JackPart() = default;

JackClient::JackClient(std::string server) : m_server(std::move(server))
{
    jack_set_error_function(&quiet);
    jack_set_info_function(&quiet);
}

JackClient::~JackClient()
{
    const std::lock_guard guard(m_lock);
    disconnect();
}

bool JackClient::poll(Nanos now)
{
    const std::lock_guard guard(m_lock);
    if (m_lost.load(std::memory_order_acquire)) disconnect();
    if (!m_client && now >= m_nextTry) {
        connect();
        m_nextTry = now + retryAfter;
    }
    return m_news.exchange(false, std::memory_order_acq_rel);
}

void JackClient::connect()
{
    const auto options =
        static_cast<jack_options_t>(m_server.empty() ? JackNoStartServer : JackNoStartServer | JackServerName);
    m_client = jack_client_open(clientName, options, nullptr, m_server.c_str());
    if (!m_client) return;
    m_lost.store(false, std::memory_order_release);
    jack_set_process_callback(m_client, &JackClient::onProcess, this);
    jack_on_shutdown(m_client, &JackClient::onShutdown, this);
    jack_set_port_registration_callback(m_client, &JackClient::onPort, this);
    jack_set_port_rename_callback(m_client, &JackClient::onRename, this);
    for (JackPart* part : m_parts) {
        part->connected(m_client);
        m_processed.add(*part);
    }
    if (jack_activate(m_client) != 0) return disconnect();
    m_running.store(true, std::memory_order_release);
    for (JackPart* part : m_parts) part->activated(m_client);
    m_news.store(true, std::memory_order_release);
}

void JackClient::disconnect()
{
    m_running.store(false, std::memory_order_release);
    if (!m_client) return;
    // Closing may cancel JACK's thread wherever it is: not inside a part.
    for (JackPart* part : m_parts) m_processed.remove(*part);
    jack_client_close(m_client);
    m_client = nullptr;
    m_processed.reset();
    for (JackPart* part : m_parts) part->disconnected();
    m_news.store(true, std::memory_order_release);
}

bool JackClient::add(JackPart& part)
{
    const std::lock_guard guard(m_lock);
    if (m_parts.size() == maxParts) return false;
    m_parts.push_back(&part);
    if (running()) {
        part.connected(m_client);
        m_processed.add(part);
        part.activated(m_client);
    }
    return true;
}

void JackClient::remove(JackPart& part)
{
    const std::lock_guard guard(m_lock);
    m_processed.remove(part);
    std::erase(m_parts, &part);
}

int JackClient::onProcess(jack_nframes_t frames, void* self) noexcept
{
    auto& client = *static_cast<JackClient*>(self);
    client.m_processed.forEach([&](JackPart& part) { part.process(client.m_client, frames); });
    return 0;
}

void JackClient::onShutdown(void* self) noexcept
{
    auto& client = *static_cast<JackClient*>(self);
    client.m_running.store(false, std::memory_order_release);
    client.m_lost.store(true, std::memory_order_release);
    client.m_news.store(true, std::memory_order_release);
}

void JackClient::onPort(jack_port_id_t, int, void* self) noexcept
{
    static_cast<JackClient*>(self)->m_news.store(true, std::memory_order_release);
}

void JackClient::onRename(jack_port_id_t, const char*, const char*, void* self) noexcept
{
    static_cast<JackClient*>(self)->m_news.store(true, std::memory_order_release);
}

} // namespace tessaro
