// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/DeviceLink.h"

#include "bench/LineReader.h"
#include "bench/ReplySender.h"

#include <memory>

namespace corvane::bench {

void DeviceLink::attach(ByteStream &stream)
{
    auto *sender = new ReplySender(stream, m_faults);
    const auto reader = std::make_shared<LineReader>();
    connect(&stream, &ByteStream::opened, this, [this, sender] { sender->send(m_device.greet()); });
    connect(&stream, &ByteStream::closed, this, [reader] { reader->take(); });
    connect(&stream, &ByteStream::received, this, [this, sender, reader](const QByteArray &bytes) {
        for (const QByteArray &line : reader->feed(bytes)) {
            if (!sender->send(m_device.respond(line)))
                return;
        }
    });
}

} // namespace corvane::bench
