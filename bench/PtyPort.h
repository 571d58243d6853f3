// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/ByteStream.h"

#include <QSocketNotifier>
#include <QString>

namespace corvane::bench {

/// A serial port that others can open: a pseudo terminal behind a symbolic link. All 256 byte
/// values pass; nothing is echoed. Pulled out, its link is gone and whoever has it open sees a
/// hang-up.
class PtyPort : public ByteStream, public Plug
{
public:
    /// The link appears at `link`; a link that is there already is replaced.
    explicit PtyPort(QString link);
    ~PtyPort() override;

    /// The path to open. Stays the same over unplug() and replug().
    [[nodiscard]] QString path() const { return m_link; }
    /// Why replug() failed.
    [[nodiscard]] QString errorString() const { return m_error; }

    void send(const QByteArray &bytes) override;
    [[nodiscard]] qint64 backlog() const override { return m_output.size(); }
    void dropPeer() override;
    void unplug() override;
    bool replug() override;
    [[nodiscard]] bool isPlugged() const override { return m_master >= 0; }
    /// What a client set the line to; empty until one has. A pseudo terminal keeps rate and stop
    /// bits alone.
    [[nodiscard]] QString state() const override;
    void discardOutput() override;

private:
    bool openPair();
    bool fail(const QString &what);
    void readInput();
    void writeOutput();
    void close();

    /// What is sent while nobody reads is lost beyond this, as on a line without a listener.
    static constexpr qsizetype mostBacklog = 1 << 20;

    QString m_link;
    /// What the link leads to.
    QString m_slave;
    QString m_error;
    QByteArray m_output;
    int m_master = -1;
    /// Held open so that the master sees no hang-up whenever nobody has the port open.
    int m_keeper = -1;
    QSocketNotifier *m_readable = nullptr;
    QSocketNotifier *m_writable = nullptr;
};

} // namespace corvane::bench
