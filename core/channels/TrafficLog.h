// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDir>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

namespace corvane {

/// Records the replies of the two TCP Channels once a second in the log file, and says what it has
/// recorded.
class TrafficLog : public QObject
{
    Q_OBJECT

public:
    static constexpr int intervalMs = 1000;
    static constexpr int flashIntervalMs = 250;
    /// Of a longer reply the newest bytes are logged: the log grows by no more a second.
    static constexpr qsizetype longestReply = 1'000'000;

    /// What the log reads of one TCP Channel.
    struct Source
    {
        std::function<bool()> isChecked;
        std::function<bool()> isConnected;
        std::function<QByteArray()> reply;
    };

    /// Which Channels a record holds.
    enum class Selector { TcpIp1 = 3, TcpIp2 = 4, Both = 34 };

    TrafficLog(QString path, Source tcpIp1, Source tcpIp2, QObject *parent = nullptr);

    /// The start-up state: not logging.
    void initialise();
    void setLogging(bool on);
    [[nodiscard]] bool isLogging() const { return TimerLog->isActive(); }
    /// The log file, as the system writes paths.
    [[nodiscard]] QString place() const { return QDir::toNativeSeparators(m_path); }

    void TimerLog_Timer();
    void TimerLED_Timer();
    void PrintLog(Selector selector);

    QTimer *TimerLog = nullptr;
    QTimer *TimerLED = nullptr;

Q_SIGNALS:
    void loggingChanged(bool logging);
    /// The indicator flashes, at every write.
    void flashed(bool bright);
    /// The text of a record that stands in the file now.
    void recorded(const QString &record);
    /// The log file could not be written; logging has ended. Once for each failure.
    void failed(const QString &description);
    /// A reply was longer than the log takes.
    void shortened(const QString &note);

private:
    QString newest(const Source &source);
    bool appendToFile(const QString &line);

    const QString m_path;
    const Source m_tcpIp1;
    const Source m_tcpIp2;
    bool LogFlash = false;
};

} // namespace corvane
