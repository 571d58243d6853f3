#include "bench/Fault.h"

#include "bench/Literals.h"
#include "bench/Text.h"

#include <QStringList>

namespace corvane::bench {

namespace {

using Kind = Fault::Kind;

struct Row
{
    Kind kind;
    const char *word;
    /// What follows the word, and the numbers in force when it is left out.
    const char *arguments;
    int ms;
    qint64 bytes;
    int piece;
    bool once;
    const char *about;
};

constexpr Row rows[] = {
    {Kind::None, "none", "", 0, 0, 0, false, "no fault; what was unplugged is back"},
    {Kind::Silent, "silent", "[once]", 0, 0, 0, false, "no reply"},
    {Kind::Slow, "slow", "[MS] [once]", 500, 0, 0, false, "the reply comes MS milliseconds late"},
    {Kind::Late, "late", "[once]", 0, 0, 0, false, "the reply comes with the next command"},
    {Kind::Split, "split", "[MS] [once]", 20, 0, 0, false,
     "the reply in pieces MS apart, CR and LF each by itself"},
    {Kind::Garbage, "garbage", "[TEXT] [once]", 0, 0, 0, false,
     R"(TEXT (\r \n \xHH) or all 256 byte values as the reply)"},
    {Kind::Twice, "twice", "[MS] [once]", 0, 0, 0, false, "the reply, and again after MS"},
    {Kind::NoEnd, "noend", "[once]", 0, 0, 0, false, "the reply without its line end"},
    {Kind::Drop, "drop", "", 0, 0, 0, true, "the connection drops at the next command"},
    {Kind::Flood, "flood", "[BYTES [PIECE]]", 0, 10'000'000, 4096, true,
     "the next reply is BYTES bytes, PIECE at a time"},
    {Kind::Unplug, "unplug", "", 0, 0, 0, false, "gone, until the fault is cleared"},
};

const Row &rowOf(Kind kind)
{
    return rows[static_cast<size_t>(kind)];
}

bool takesMs(Kind kind)
{
    return kind == Kind::Slow || kind == Kind::Split || kind == Kind::Twice;
}

/// Puts the words after the fault's own into it; false when they do not fit.
bool takeNumbers(const QStringList &words, Fault &fault)
{
    constexpr int longestMs = 600'000;
    constexpr int largestPiece = 1 << 16;
    if (takesMs(fault.kind) && words.size() == 1) {
        const auto ms = text::whole(words[0].toLatin1(), 0, longestMs);
        fault.ms = ms.value_or(0);
        return ms.has_value();
    }
    if (fault.kind == Kind::Flood && words.size() <= 2 && !words.isEmpty()) {
        const auto bytes = text::whole(words[0].toLatin1(), 1, int(Fault::mostFloodBytes));
        const auto piece = words.size() < 2 ? std::optional(fault.piece)
                                            : text::whole(words[1].toLatin1(), 1, largestPiece);
        fault.bytes = bytes.value_or(0);
        fault.piece = piece.value_or(0);
        return bytes && piece;
    }
    return words.isEmpty();
}

QByteArray escaped(const QByteArray &text)
{
    QByteArray result;
    for (const char c : text) {
        if (c == '\\')
            result += "\\\\";
        else if (c >= ' ' && c <= '~')
            result += c;
        else
            result += "\\x" + QByteArray(1, c).toHex();
    }
    return result;
}

} // namespace

std::optional<Fault> Fault::parse(const QString &text)
{
    QString rest = text.trimmed();
    Fault fault;
    const QString onceWord = u" once"_s;
    if (rest.endsWith(onceWord, Qt::CaseInsensitive)) {
        fault.once = true;
        rest = rest.chopped(onceWord.size()).trimmed();
    }
    const QString word = rest.section(u' ', 0, 0);
    rest = rest.section(u' ', 1).trimmed();
    for (const Row &row : rows) {
        if (word.compare(QLatin1String(row.word), Qt::CaseInsensitive) != 0)
            continue;
        fault.kind = row.kind;
        fault.ms = row.ms;
        fault.bytes = row.bytes;
        fault.piece = row.piece;
        fault.once = fault.once || row.once;
        if (row.kind == Kind::Garbage) {
            fault.text = text::unescaped(rest.toLatin1());
            return fault;
        }
        if (!takeNumbers(rest.split(u' ', Qt::SkipEmptyParts), fault))
            return std::nullopt;
        return fault;
    }
    return std::nullopt;
}

QString Fault::toString() const
{
    const Row &row = rowOf(kind);
    QString written = QLatin1String(row.word);
    if (takesMs(kind))
        written += u" %1"_s.arg(ms);
    if (kind == Kind::Flood)
        written += u" %1 %2"_s.arg(bytes).arg(piece);
    if (kind == Kind::Garbage && !text.isEmpty())
        written += u' ' + QString::fromLatin1(escaped(text));
    if (once && !row.once)
        written += u" once"_s;
    return written;
}

std::vector<OrderText> Fault::choices()
{
    std::vector<OrderText> choices;
    for (const Row &row : rows)
        choices.push_back(
            {QLatin1String(row.word), QLatin1String(row.arguments), QLatin1String(row.about)});
    return choices;
}

} // namespace corvane::bench
