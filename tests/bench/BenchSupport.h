// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/BenchDevice.h"
#include "bench/Fault.h"
#include "devices/Literals.h"
#include "tests/support/Soon.h"

#include <QTcpSocket>

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace corvane::bench {

using corvane::soon;

/// The reply to a line; "(silent)" when there is none.
inline std::string ask(BenchDevice &device, const QByteArray &line)
{
    return device.answer(line).value_or("(silent)").toStdString();
}

/// Pieces as "ms:bytes|ms:bytes", an end marked "$".
inline std::string written(const Pieces &pieces)
{
    QByteArray text;
    for (const TimedPiece &piece : pieces) {
        text += (text.isEmpty() ? "" : "|") + QByteArray::number(piece.afterMs) + ':' +
                piece.bytes + (piece.end ? "$" : "");
    }
    return text.toStdString();
}

/// The fault that the text orders.
inline Fault parsed(const char *text)
{
    const auto fault = Fault::parse(QLatin1String(text));
    EXPECT_TRUE(fault) << text;
    return fault.value_or(Fault{});
}

/// A line and the reply it must get.
struct Dialogue
{
    const char *line;
    const char *reply;
};

template <size_t count>
void expectReplies(BenchDevice &device, const Dialogue (&rows)[count])
{
    for (const Dialogue &row : rows)
        EXPECT_EQ(ask(device, row.line), row.reply) << "to: " << row.line;
}

/// A device that answers each line with itself.
class EchoDevice : public BenchDevice
{
public:
    std::optional<QByteArray> answer(const QByteArray &line) override { return line; }
};

/// The program's end of a TCP connection.
class TcpUser
{
public:
    explicit TcpUser(quint16 port)
    {
        m_socket.connectToHost(u"127.0.0.1"_s, port);
        EXPECT_TRUE(soon([&] { return connected(); }));
    }

    [[nodiscard]] bool connected() const
    {
        return m_socket.state() == QAbstractSocket::ConnectedState;
    }
    void send(const QByteArray &bytes) { m_socket.write(bytes); }
    /// Everything that has arrived since the last clear().
    const QByteArray &input()
    {
        m_input += m_socket.readAll();
        return m_input;
    }
    void clear()
    {
        m_socket.readAll();
        m_input.clear();
    }
    /// Waits for exactly these bytes, and takes them.
    void expect(const QByteArray &bytes)
    {
        EXPECT_TRUE(soon([&] { return input().size() >= bytes.size(); })) << bytes.toStdString();
        EXPECT_EQ(input().toStdString(), bytes.toStdString());
        clear();
    }

private:
    QTcpSocket m_socket;
    QByteArray m_input;
};

/// The program's end of a pseudo terminal.
class PtyUser
{
public:
    explicit PtyUser(const QString &path)
        : m_descriptor(
              ::open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
        EXPECT_GE(m_descriptor, 0);
    }
    ~PtyUser() { ::close(m_descriptor); }
    Q_DISABLE_COPY_MOVE(PtyUser)

    [[nodiscard]] int descriptor() const { return m_descriptor; }
    void send(const QByteArray &bytes)
    {
        EXPECT_EQ(::write(m_descriptor, bytes.constData(), size_t(bytes.size())), bytes.size());
    }
    const QByteArray &input()
    {
        char buffer[65536];
        ssize_t count = 0;
        while ((count = ::read(m_descriptor, buffer, sizeof buffer)) > 0)
            m_input.append(buffer, count);
        m_hungUp = count == 0 || errno != EAGAIN;
        return m_input;
    }
    /// True when the other end of the line is gone.
    bool hungUp()
    {
        input();
        return m_hungUp;
    }
    void expect(const QByteArray &bytes)
    {
        EXPECT_TRUE(soon([&] { return input().size() >= bytes.size(); })) << bytes.toStdString();
        EXPECT_EQ(input().toStdString(), bytes.toStdString());
        m_input.clear();
    }

private:
    int m_descriptor;
    QByteArray m_input;
    bool m_hungUp = false;
};

} // namespace corvane::bench
