// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace corvane {

/// A hold of its own on a connected socket: what the operating system knows of the connection after
/// the toolkit has let go of it. Systems without the means answer as if all were well.
class TcpLine
{
public:
    TcpLine() = default;
    ~TcpLine() { release(); }
    Q_DISABLE_COPY_MOVE(TcpLine)

    /// `socket` is the connected socket's descriptor. The connection stays open until it is
    /// released here, too.
    void hold(qintptr socket);
    void release();

    /// The peer broke the connection off instead of ending it.
    [[nodiscard]] bool wasReset() const;
    /// What had arrived and the toolkit did not fetch; at most what the system keeps of a
    /// connection.
    [[nodiscard]] QByteArray takeRest() const;

private:
    int m_descriptor = -1;
};

} // namespace corvane
