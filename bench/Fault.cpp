// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Fault.h"

#include "bench/Literals.h"
#include "bench/Text.h"

#include <QStringList>

namespace corvane::bench {

namespace {

using Kind = Fault::Kind;

struct Row
{
    OrderText text;
    /// What is in force when its arguments are left out.
    Fault fault;
};

const Row rows[] = {
    {{"none"_L1, ""_L1, "no fault; what was unplugged is back"_L1}, {.kind = Kind::None}},
    {{"silent"_L1, "[once]"_L1, "no reply"_L1}, {.kind = Kind::Silent}},
    {{"slow"_L1, "[MS] [once]"_L1, "the reply comes MS milliseconds late"_L1},
     {.kind = Kind::Slow, .ms = 500}},
    {{"late"_L1, "[once]"_L1, "the reply comes with the next command"_L1}, {.kind = Kind::Late}},
    {{"split"_L1, "[MS] [once]"_L1, "the reply in pieces MS apart, CR and LF each by itself"_L1},
     {.kind = Kind::Split, .ms = 20}},
    {{"garbage"_L1, "[TEXT] [once]"_L1,
      R"(TEXT (\r \n \xHH) or all 256 byte values as the reply)"_L1},
     {.kind = Kind::Garbage}},
    {{"twice"_L1, "[MS] [once]"_L1, "the reply, and again after MS"_L1}, {.kind = Kind::Twice}},
    {{"noend"_L1, "[once]"_L1, "the reply without its line end"_L1}, {.kind = Kind::NoEnd}},
    {{"drop"_L1, ""_L1, "the connection drops at the next command"_L1},
     {.kind = Kind::Drop, .once = true}},
    {{"flood"_L1, "[BYTES [PIECE]]"_L1, "the next reply is BYTES bytes, PIECE at a time"_L1},
     {.kind = Kind::Flood, .bytes = 10'000'000, .piece = 4096, .once = true}},
    {{"unplug"_L1, ""_L1, "gone, until the fault is cleared"_L1}, {.kind = Kind::Unplug}},
};

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

} // namespace

std::optional<Fault> Fault::parse(const QString &text)
{
    QString rest = text.trimmed();
    const QString onceWord = u" once"_s;
    const bool once = rest.endsWith(onceWord, Qt::CaseInsensitive);
    if (once)
        rest = rest.chopped(onceWord.size()).trimmed();
    const QString word = rest.section(u' ', 0, 0);
    rest = rest.section(u' ', 1).trimmed();
    for (const Row &row : rows) {
        if (word.compare(row.text.word, Qt::CaseInsensitive) != 0)
            continue;
        Fault fault = row.fault;
        fault.once = fault.once || once;
        if (fault.kind == Kind::Garbage) {
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
    const Row &row = rows[static_cast<size_t>(kind)];
    QString written = row.text.word;
    if (takesMs(kind))
        written += u" %1"_s.arg(ms);
    if (kind == Kind::Flood)
        written += u" %1 %2"_s.arg(bytes).arg(piece);
    if (kind == Kind::Garbage && !text.isEmpty())
        written += u' ' + QString::fromLatin1(text::escaped(text));
    if (once && !row.fault.once)
        written += u" once"_s;
    return written;
}

std::vector<OrderText> Fault::choices()
{
    std::vector<OrderText> choices;
    for (const Row &row : rows)
        choices.push_back(row.text);
    return choices;
}

} // namespace corvane::bench
