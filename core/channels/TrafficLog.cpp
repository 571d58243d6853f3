// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/TrafficLog.h"

#include "core/channels/ChannelTexts.h"
#include "core/text/LineEnds.h"
#include "devices/RegularFile.h"

#include <QDate>
#include <QFile>

namespace corvane {

TrafficLog::TrafficLog(QString path, Source tcpIp1, Source tcpIp2, QObject *parent)
    : QObject(parent)
    , TimerLog(new QTimer(this))
    , TimerLED(new QTimer(this))
    , m_path(std::move(path))
    , m_tcpIp1(std::move(tcpIp1))
    , m_tcpIp2(std::move(tcpIp2))
{
    for (QTimer *timer : {TimerLog, TimerLED})
        timer->setTimerType(Qt::PreciseTimer);
    TimerLED->setInterval(flashIntervalMs);
    connect(TimerLog, &QTimer::timeout, this, &TrafficLog::TimerLog_Timer);
    connect(TimerLED, &QTimer::timeout, this, &TrafficLog::TimerLED_Timer);
}

void TrafficLog::initialise()
{
    TimerLog->stop();
    TimerLog->setInterval(intervalMs);
}

void TrafficLog::setLogging(bool on)
{
    if (on)
        TimerLog->start();
    else
        TimerLog->stop();
    Q_EMIT loggingChanged(on);
}

void TrafficLog::TimerLog_Timer()
{
    const bool first = m_tcpIp1.isChecked();
    const bool second = m_tcpIp2.isChecked();
    if (!first && !second)
        return;
    if ((first && !m_tcpIp1.isConnected()) || (second && !m_tcpIp2.isConnected()))
        return;
    TimerLED->start();
    PrintLog(first && second ? Selector::Both : first ? Selector::TcpIp1 : Selector::TcpIp2);
}

void TrafficLog::TimerLED_Timer()
{
    Q_EMIT flashed(LogFlash);
    LogFlash = !LogFlash;
    if (LogFlash)
        TimerLED->stop();
}

void TrafficLog::PrintLog(Selector selector)
{
    QStringList replies;
    if (selector != Selector::TcpIp2)
        replies.append(newest(m_tcpIp1));
    if (selector != Selector::TcpIp1)
        replies.append(newest(m_tcpIp2));
    if (replies.contains(QString()))
        return;
    const bool isBare = selector == Selector::TcpIp1; // the reply alone, on one line
    if (isBare)
        replies.front() = lineEnds::removed(replies.front()).remove(u'\t');
    const QString record =
        QDate::currentDate().toString(Qt::ISODate) + u" , "_s + replies.join(u" , "_s);
    if (appendToFile(isBare ? replies.front() : u'"' + record + u'"'))
        Q_EMIT recorded(record);
}

QString TrafficLog::newest(const Source &source)
{
    const QByteArray reply = source.reply();
    if (reply.size() <= longestReply)
        return QString::fromLatin1(reply);
    Q_EMIT shortened(channelTexts::logShortened.arg(longestReply));
    return QString::fromLatin1(QByteArrayView(reply).last(longestReply));
}

bool TrafficLog::appendToFile(const QString &line)
{
    QFile file(m_path);
    QString fault = regularFile::open(file, QIODevice::Append | QIODevice::Unbuffered);
    if (fault.isEmpty()) {
        const qint64 before = file.size();
        fault = regularFile::write(file, line.toLatin1() + "\r\n");
        if (fault.isEmpty())
            return true;
        // A part of a record would run into the next one. What somebody else appended behind it, or
        // in between, is not cut away with it.
        if (file.pos() != before && (file.size() != file.pos() || !file.resize(before)))
            fault += channelTexts::logTorn;
    }
    setLogging(false);
    Q_EMIT failed(u"%1: %2"_s.arg(m_path, fault));
    return false;
}

} // namespace corvane
