// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Recording.h"

#include "bench/Literals.h"
#include "bench/RecordedTalk.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <array>
#include <cmath>
#include <map>
#include <utility>

namespace corvane::bench {

namespace {

const QStringList channels{u"RS-485"_s, u"RS-232"_s, u"IEEE 488"_s, u"TCP/IP-1"_s, u"TCP/IP-2"_s};
constexpr int gpibChannel = 2;

/// A member that is a whole number, and not negative.
std::optional<qint64> wholeMember(const QJsonObject &object, QLatin1String name)
{
    constexpr double largest = 9'007'199'254'740'992; // above, numbers are not exact
    const double value = object[name].toDouble(-1);
    if (value < 0 || value > largest || value != std::floor(value))
        return std::nullopt;
    return static_cast<qint64>(value);
}

/// A member of text with a character a byte.
std::optional<QByteArray> bytesMember(const QJsonObject &object, QLatin1String name)
{
    const QString text = object[name].toString();
    const QByteArray bytes = text.toLatin1();
    if (!object[name].isString() || QString::fromLatin1(bytes) != text)
        return std::nullopt;
    return bytes;
}

/// Puts the lines of one file into a recording.
class Reader
{
public:
    Reader(Recording &recording, Recording::Limits limits)
        : m_recording(recording)
        , m_limits(limits)
    {
    }

    void read(QFile &file);

private:
    bool takeStart(const QByteArray &line);
    void takeLine(const QByteArray &line, bool ended);
    /// What is wrong with the event; empty when nothing is.
    QString take(const QJsonObject &event);
    QString takeData(const QJsonObject &event, int channel, qint64 time);
    void takeAddress(const QString &text, qint64 time);

    void connected(int channel, const QString &text, qint64 time);
    /// With the device of a Channel, on the GPIB with that at the address known last.
    RecordedTalk &talk(int channel, qint64 time);
    void part();
    void passOver();
    void note(const QString &text);
    void noteAll();
    void finish();

    Recording &m_recording;
    const Recording::Limits m_limits;
    /// Channel, and on the GPIB board, address and secondary address.
    using Key = std::array<int, 4>;

    std::map<Key, RecordedTalk> m_talks;
    /// The address that traffic on the GPIB belongs to.
    std::optional<RecordedDevice::Gpib> m_gpib;
    qint64 m_line = 0;
    qint64 m_kept = 0;
    qint64 m_untold = 0;
    /// Where a Channel was connected elsewhere.
    QStringList m_moves;
    /// Events are missing before this line.
    bool m_parted = false;
    qint64 m_passedOver = 0;
    qint64 m_firstPassedOver = 0;
};

void Reader::read(QFile &file)
{
    // One buffer for all lines: most of its pages are never touched.
    QByteArray buffer(m_limits.lineBytes + 2, Qt::Uninitialized);
    bool tooLong = false;
    while (m_kept <= m_limits.keptBytes) {
        const qint64 size = file.readLine(buffer.data(), buffer.size());
        if (size <= 0)
            break;
        const bool ended = buffer.at(size - 1) == '\n';
        const bool continues = std::exchange(tooLong, !ended && size > m_limits.lineBytes);
        if (continues)
            continue;
        ++m_line;
        const QByteArray line = QByteArray::fromRawData(buffer.constData(), size);
        if (m_line == 1 && !takeStart(line))
            return;
        if (tooLong) {
            part();
            note(u"it is longer than %1 bytes"_s.arg(m_limits.lineBytes));
        } else if (m_line > 1) {
            takeLine(line, ended);
        }
    }
    if (m_kept > m_limits.keptBytes)
        note(u"there is too much data; what follows is not used"_s);
    else if (file.error() != QFileDevice::NoError)
        note(u"it cannot be read on: "_s + file.errorString());
    finish();
}

bool Reader::takeStart(const QByteArray &line)
{
    const QJsonObject start = QJsonDocument::fromJson(line).object();
    const auto version = wholeMember(start, "version"_L1);
    if (start["event"_L1] != u"start"_s || start["format"_L1] != u"corvane-traffic"_s || !version)
        m_recording.fault = u"it is no recording of traffic"_s;
    else if (version != 1)
        m_recording.fault =
            u"it is a recording of version %1, and only version 1 is known here"_s.arg(*version);
    return m_recording.fault.isEmpty();
}

void Reader::takeLine(const QByteArray &line, bool ended)
{
    const QJsonDocument document = QJsonDocument::fromJson(line);
    if (!document.isObject() && !ended) {
        note(u"the file is cut here; what is before it is used"_s);
        return;
    }
    const QString wrong = document.isObject() ? take(document.object()) : u"it is no JSON object"_s;
    if (wrong.isEmpty())
        return;
    part();
    note(wrong);
}

QString Reader::take(const QJsonObject &event)
{
    const QString kind = event["event"_L1].toString();
    const auto time = wholeMember(event, "time"_L1);
    if (kind.isEmpty())
        return u"it has no \"event\""_s;
    if (!time)
        return u"its \"time\" is no number of microseconds"_s;
    if (kind == u"start")
        return u"another recording begins here"_s;
    if (kind == u"lost")
        return u"events are missing here: %1"_s.arg(event["count"_L1].toInteger());
    const bool addresses = kind == u"addressed";
    const bool connects = kind == u"connected";
    if (kind != u"data" && !addresses && !connects)
        return {};
    const auto channel = static_cast<int>(channels.indexOf(event["channel"_L1].toString()));
    if (channel < 0)
        note(u"its \"channel\" is none of %1"_s.arg(channels.join(u", "_s)));
    else if (addresses)
        takeAddress(event["text"_L1].toString(), *time);
    else if (!connects)
        return takeData(event, channel, *time);
    else if (channel != gpibChannel)
        connected(channel, event["text"_L1].toString(), *time);
    return {};
}

QString Reader::takeData(const QJsonObject &event, int channel, qint64 time)
{
    const QString direction = event["direction"_L1].toString();
    const auto bytes = bytesMember(event, "bytes"_L1);
    if (direction != u"sent" && direction != u"received")
        return u"its \"direction\" is neither sent nor received"_s;
    if (!bytes)
        return u"its \"bytes\" are no text with a character a byte"_s;
    if (channel == gpibChannel && !m_gpib) {
        passOver();
        return {};
    }
    RecordedTalk &talk = this->talk(channel, time);
    if (direction == u"sent")
        talk.sent(*bytes, time);
    else if (!talk.received(*bytes, time))
        passOver();
    return {};
}

void Reader::takeAddress(const QString &text, qint64 time)
{
    static const QRegularExpression pattern(
        u"^GPIB([0-3])::([012]?\\d|30)(?:::(9[6-9]|1[01]\\d|12[0-6]))?$"_s);
    const QRegularExpressionMatch match = pattern.match(text);
    m_gpib.reset();
    if (!match.hasMatch()) {
        note(u"its \"text\" is no GPIB address that can be replayed"_s);
        return;
    }
    m_gpib = {match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt()};
    talk(gpibChannel, time);
}

void Reader::connected(int channel, const QString &text, qint64 time)
{
    const QString place = text.section(u',', 0, 0); // a serial port's settings follow it
    const bool again = m_talks.contains({channel});
    RecordedTalk &talk = this->talk(channel, time);
    if (again)
        talk.connected(time);
    else
        talk.begin(time);
    if (const QString before = talk.movesFrom(place); !before.isEmpty())
        m_moves.append(u"line %1: %2 goes to %3 here, and to %4 before; one device answers for all "
                       "its places"_s.arg(m_line)
                           .arg(channels.at(channel), place, before));
}

RecordedTalk &Reader::talk(int channel, qint64 time)
{
    const auto gpib = channel == gpibChannel ? m_gpib : std::nullopt;
    const Key key = gpib ? Key{channel, gpib->board, gpib->address, gpib->secondary} : Key{channel};
    const auto [found, isNew] = m_talks.try_emplace(key, channels.at(channel), gpib, m_kept);
    if (isNew && !m_parted)
        found->second.begin(time);
    return found->second;
}

/// Nothing is known any more of what was going on: no request half sent, none that waits for its
/// reply, no GPIB address.
void Reader::part()
{
    for (auto &[key, talk] : m_talks)
        talk.part();
    m_gpib.reset();
    m_parted = true;
}

void Reader::passOver()
{
    if (++m_passedOver == 1)
        m_firstPassedOver = m_line;
}

void Reader::note(const QString &text)
{
    constexpr qsizetype most = 10;
    if (m_recording.notes.size() < most)
        m_recording.notes.append(u"line %1: %2"_s.arg(m_line).arg(text));
    else
        ++m_untold;
}

void Reader::noteAll()
{
    if (m_untold > 0)
        m_recording.notes.append(u"and %1 more"_s.arg(m_untold));
    if (m_passedOver > 0)
        m_recording.notes.append(
            u"data events whose request or GPIB address is not known, and which are not used: %1, "
            "the first in line %2"_s.arg(m_passedOver)
                .arg(m_firstPassedOver));
}

void Reader::finish()
{
    noteAll();
    for (auto &[key, talk] : m_talks) {
        if (auto device = talk.finish())
            m_recording.devices.push_back(std::move(*device));
    }
    if (!m_recording.devices.empty()) {
        m_recording.notes.append(m_moves);
        return;
    }
    const QString noted = m_recording.notes.value(0);
    m_recording.fault =
        u"there is no data in it"_s + (noted.isEmpty() ? QString() : u" ("_s + noted + u')');
}

} // namespace

Recording Recording::read(const QString &path, Limits limits)
{
    Recording recording;
    recording.path = path;
    QFile file(path);
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        recording.fault = u"it is no regular file"_s;
    else if (!file.open(QIODevice::ReadOnly))
        recording.fault = file.errorString();
    else if (info.size() == 0)
        recording.fault = u"it is empty"_s;
    else
        Reader(recording, limits).read(file);
    return recording;
}

} // namespace corvane::bench
