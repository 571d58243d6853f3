#include "bench/Recording.h"

#include "bench/LineReader.h"
#include "bench/Literals.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
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
    /// The traffic with one device so far.
    struct Talk
    {
        RecordedDevice device;
        /// What was sent of a request that is not ended yet.
        LineReader request;
        /// Takes what is received: the reply to the last request, or what came unasked. Null: after
        /// events that are missing nobody knows.
        Pieces *open = nullptr;
        /// Of its first piece.
        TimedPiece::Turn turn = TimedPiece::Turn::Next;
        qint64 openedAt = 0;
        /// Milliseconds from there to the last piece.
        qint64 lastMs = 0;
    };

    bool takeStart(const QByteArray &line);
    void takeLine(const QByteArray &line, bool ended);
    /// What is wrong with the event; empty when nothing is.
    QString take(const QJsonObject &event);
    QString takeData(const QJsonObject &event, int channel, qint64 time);
    void takeAddress(const QString &text, qint64 time);

    void connected(int channel, qint64 time);
    /// With the device of a Channel, on the GPIB with that at the address known last.
    Talk &talk(int channel, qint64 time);
    static void open(Talk &talk, Pieces &pieces, TimedPiece::Turn turn, qint64 time);
    static TimedPiece::Turn turnOf(const Talk &talk, int afterMs);
    void sent(Talk &talk, const QByteArray &bytes, qint64 time);
    void received(Talk &talk, const QByteArray &bytes, qint64 time);
    void keep(const QByteArray &bytes);
    void part();
    void passOver();
    void note(const QString &text);
    void noteAll();
    void finish();

    Recording &m_recording;
    const Recording::Limits m_limits;
    /// Channel, and on the GPIB board, address and secondary address.
    using Key = std::array<int, 4>;

    std::map<Key, Talk> m_talks;
    /// The address that traffic on the GPIB belongs to.
    std::optional<RecordedDevice::Gpib> m_gpib;
    qint64 m_line = 0;
    qint64 m_kept = 0;
    qint64 m_untold = 0;
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
        connected(channel, *time);
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
    Talk &talk = this->talk(channel, time);
    if (direction == u"sent")
        sent(talk, *bytes, time);
    else
        received(talk, *bytes, time);
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

void Reader::connected(int channel, qint64 time)
{
    const bool again = m_talks.contains({channel});
    Talk &talk = this->talk(channel, time);
    if (again) {
        keep({});
        talk.request.take();
        talk.device.unasked.emplace_back();
    }
    open(talk, talk.device.unasked.back(), TimedPiece::Turn::Unasked, time);
}

Reader::Talk &Reader::talk(int channel, qint64 time)
{
    const auto gpib = channel == gpibChannel ? m_gpib : std::nullopt;
    const auto [found, isNew] = m_talks.try_emplace(
        gpib ? Key{channel, gpib->board, gpib->address, gpib->secondary} : Key{channel});
    Talk &talk = found->second;
    if (isNew) {
        talk.device.channel = channels.at(channel);
        talk.device.gpib = gpib;
        talk.device.unasked.emplace_back();
        if (!m_parted)
            open(talk, talk.device.unasked.back(), TimedPiece::Turn::Unasked, time);
    }
    return talk;
}

void Reader::open(Talk &talk, Pieces &pieces, TimedPiece::Turn turn, qint64 time)
{
    talk.open = &pieces;
    talk.turn = turn;
    talk.openedAt = time;
    talk.lastMs = 0;
}

void Reader::sent(Talk &talk, const QByteArray &bytes, qint64 time)
{
    QList<QByteArray> lines = talk.request.feed(bytes);
    // A message on the GPIB ends by its mark too.
    if (const QByteArray rest = talk.device.gpib ? talk.request.take() : QByteArray();
        !rest.isEmpty())
        lines.append(rest);
    for (const QByteArray &line : lines) {
        keep(line);
        if (++talk.device.exchanges == 1)
            talk.device.firstRequest = line;
        open(talk, talk.device.replies[line].emplace_back(), TimedPiece::Turn::Reply, time);
    }
}

void Reader::received(Talk &talk, const QByteArray &bytes, qint64 time)
{
    constexpr qint64 longestMs = std::numeric_limits<int>::max();
    if (bytes.isEmpty())
        return;
    if (!talk.open) {
        passOver();
        return;
    }
    keep(bytes);
    // Rounded from the request on, so that many small delays add up to the whole.
    const qint64 ms = std::max(talk.lastMs, (time - talk.openedAt + 500) / 1000);
    const auto afterMs = static_cast<int>(std::min(ms - talk.lastMs, longestMs));
    talk.open->push_back({afterMs, bytes, false, turnOf(talk, afterMs)});
    talk.lastMs = ms;
}

/// On the GPIB nothing comes that is not read.
TimedPiece::Turn Reader::turnOf(const Talk &talk, int afterMs)
{
    using Turn = TimedPiece::Turn;
    if (talk.device.gpib)
        return Turn::Next;
    if (talk.open->empty())
        return talk.turn;
    return afterMs >= Recording::quietMs ? Turn::Unasked : Turn::Rest;
}

/// Nothing is known any more of what was going on: no request half sent, none that waits for its
/// reply, no GPIB address.
void Reader::part()
{
    for (auto &[key, talk] : m_talks) {
        talk.request.take();
        talk.open = nullptr;
    }
    m_gpib.reset();
    m_parted = true;
}

void Reader::passOver()
{
    if (++m_passedOver == 1)
        m_firstPassedOver = m_line;
}

/// Counts what a piece or a request takes, with what is around it.
void Reader::keep(const QByteArray &bytes)
{
    constexpr qint64 around = 160;
    m_kept += bytes.size() + around;
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
    const auto markEnds = [](std::vector<Pieces> &all) {
        for (Pieces &pieces : all) {
            if (!pieces.empty())
                pieces.back().end = true;
        }
    };
    noteAll();
    for (auto &[key, talk] : m_talks) {
        if (talk.device.exchanges == 0 && std::ranges::all_of(talk.device.unasked, &Pieces::empty))
            continue;
        markEnds(talk.device.unasked);
        for (std::vector<Pieces> &replies : talk.device.replies)
            markEnds(replies);
        m_recording.devices.push_back(std::move(talk.device));
    }
    if (!m_recording.devices.empty())
        return;
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
