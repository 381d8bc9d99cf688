// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/queue_writer.h"

#include "realtime/loom/loom.h"

namespace tessaro {

void QueueWriter::put(_LOOM_QUE_REC& record)
{
    record.delta = static_cast<std::int32_t>(m_stepCount - m_lastStep);
    record.time = m_time;
    if (m_loom.putLoomQueData(record)) m_lastStep = m_stepCount;
}

void QueueWriter::nullRecord()
{
    _LOOM_QUE_REC record;
    put(record);
}

void QueueWriter::shortMessage(int track, std::uint8_t port, std::uint8_t status, std::uint8_t data1,
                               std::uint8_t data2)
{
    _LOOM_QUE_REC record;
    record.track = static_cast<std::int16_t>(track);
    record.port = port;
    record.status = status;
    record.data1 = data1;
    record.data2 = data2;
    put(record);
}

void QueueWriter::system(std::uint8_t status, std::uint8_t data1, std::uint8_t data2)
{
    shortMessage(0, 0, status, data1, data2);
}

void QueueWriter::longMessage(int track, std::uint8_t port, std::uint8_t status, std::span<const std::uint8_t> data)
{
    _LOOM_QUE_REC record;
    record.track = static_cast<std::int16_t>(track);
    record.port = port;
    record.length = static_cast<std::uint32_t>(data.size());
    record.status = status;
    record.length16 = static_cast<std::uint16_t>(data.size());
    record.data = data.data();
    put(record);
}

void QueueWriter::tempo(std::uint8_t port, std::uint32_t tempo, const std::uint8_t* data)
{
    _LOOM_QUE_REC record;
    record.track = static_cast<std::int16_t>(tempo >> 16U);
    record.port = port;
    record.length = tempo & 0xFFFFU;
    record.status = que::tempo;
    record.length16 = static_cast<std::uint16_t>(record.length);
    record.data = data;
    put(record);
}

} // namespace tessaro
