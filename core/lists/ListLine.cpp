// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/ListLine.h"

#include "core/lists/Blanks.h"
#include "core/lists/ListKinds.h"
#include "core/text/Numbers.h"

#include <algorithm>
#include <limits>

namespace corvane {

namespace {

QLatin1StringView latin1(QByteArrayView bytes)
{
    return QLatin1StringView(bytes.data(), bytes.size());
}

/// The first words of a line, and how many there are, counted no further than any rule asks.
class Words
{
public:
    static constexpr int most = 6;

    explicit Words(QByteArrayView line)
        : m_line(line)
    {
        qsizetype from = 0;
        for (qsizetype at = 0; m_count < most && at <= line.size(); ++at) {
            if (at < line.size() && line[at] != ' ')
                continue;
            m_words[static_cast<std::size_t>(m_count)] = line.sliced(from, at - from);
            ++m_count;
            from = at + 1;
        }
    }

    /// `most` also when there are more.
    [[nodiscard]] int count() const { return m_count; }
    /// A word that there is not reads as empty.
    QByteArrayView operator[](int at) const
    {
        return at < m_count ? m_words[static_cast<std::size_t>(at)] : QByteArrayView();
    }
    /// The line from the word on, blanks at its ends aside.
    [[nodiscard]] QByteArrayView from(int at) const
    {
        return at < m_count ? withoutBlanks(m_line.sliced((*this)[at].data() - m_line.data()))
                            : QByteArrayView();
    }
    /// The line up to the end of the word.
    [[nodiscard]] QByteArrayView upTo(int at) const
    {
        return m_line.first((*this)[at].data() + (*this)[at].size() - m_line.data());
    }

private:
    QByteArrayView m_line;
    std::array<QByteArrayView, most> m_words;
    int m_count = 0;
};

void parseSettings(ListLine &parsed, QByteArrayView line)
{
    const Words words(line);
    parsed.kind = ListLine::Kind::Row;
    const bool uut = latin1(line).startsWith("UUT"_L1, Qt::CaseInsensitive);
    if (uut && words.count() > 1) {
        const QByteArray name = words[0].toByteArray();
        parsed.built = line.toByteArray().replace(name, QByteArray());
        parsed.cells[1] = latin1(words[0]);
        parsed.cells[2] = latin1(withoutBlanks(QByteArrayView(parsed.built)));
    } else if (words.count() <= 2) {
        parsed.cells[1] = latin1(line); // two words stand together: Send list refuses them
    } else if (words.count() == 3) {
        parsed.cells[1] = latin1(words.upTo(1));
        parsed.cells[2] = latin1(words[2]);
    } else {
        parsed.loss = ListLine::Loss::All;
    }
}

void parseProfile(ListLine &parsed, QByteArrayView line)
{
    parsed.kind = ListLine::Kind::Row;
    if (!line.startsWith('=')) {
        // Its row stays without a command, so a transfer stops there and not past it.
        parsed.loss = ListLine::Loss::All;
        return;
    }
    const Words words(line);
    if (words.count() < 2) {
        parsed.kind = ListLine::Kind::Bad;
        return;
    }
    parsed.cells[1] = latin1(words[0]);
    parsed.cells[2] = latin1(words[1]);
    parsed.cells[3] = latin1(words.from(2));
}

/// Of a step that is no command its first word counts, and that it is a pause.
ListLine::Loss lossOfPause(QByteArrayView line, QByteArrayView first)
{
    if (first.isEmpty())
        return ListLine::Loss::All;
    const QByteArray rest = line.toByteArray().replace("# PAUSE", QByteArray());
    const auto words = withoutBlanks(QByteArrayView(rest));
    return words.isEmpty() || words == first ? ListLine::Loss::None : ListLine::Loss::Part;
}

void parseStep(ListLine &parsed, QByteArrayView line)
{
    const Words words(line);
    const QByteArrayView first = words[0];
    const bool sets = first == "=";
    const bool asks = first == "?" || first == "!";
    if (words.count() < (asks ? 3 : sets ? 2 : 1)) {
        parsed.kind = ListLine::Kind::Bad;
        return;
    }
    parsed.kind = ListLine::Kind::Row;
    parsed.cells[1] = latin1(first);
    if (!sets && !asks) {
        parsed.loss = lossOfPause(line, first);
        return;
    }
    parsed.cells[2] = latin1(words[1]);
    if (sets || words[2].contains('"')) {
        parsed.cells[3] = latin1(words.from(2));
        return;
    }
    parsed.cells[3] = latin1(words[2]);
    if (words.count() == 4)
        parsed.cells[4] = latin1(words[3]);
    else if (!words.from(3).isEmpty())
        parsed.loss = ListLine::Loss::Part;
}

float singlePrecision(double value)
{
    constexpr double most = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -most, most));
}

void parseConstant(ListLine &parsed, const Words &words)
{
    if (words.count() != 5 || words[0] != "#" || words[1] != "CONST" || words[3] != "=")
        return;
    parsed.kind = ListLine::Kind::Constant;
    parsed.constant.name = QString(latin1(words[2]));
    parsed.constant.value = singlePrecision(numbers::leadingNumber(QString(latin1(words[4]))));
}

void parseTest(ListLine &parsed, QByteArrayView line)
{
    const bool step = QByteArrayView("!?=").contains(line.front()) || line.contains("# PAUSE");
    if (step)
        parseStep(parsed, line);
    else if (line.contains("# CONST"))
        parseConstant(parsed, Words(line));
    if (parsed.kind == ListLine::Kind::Ignored)
        parsed.loss = ListLine::Loss::All;
}

} // namespace

ListLine ListLine::parse(int listKind, QByteArrayView line)
{
    ListLine parsed;
    if (listKind == listKinds::chamberProfile)
        parseProfile(parsed, line);
    else if (listKind == listKinds::testList)
        parseTest(parsed, line);
    else
        parseSettings(parsed, line);
    if (withoutBlanks(line).isEmpty())
        parsed.loss = Loss::None;
    return parsed;
}

QByteArrayView commentMarker(QByteArrayView line)
{
    const bool comment = line.startsWith("//") || line.startsWith("\\\\");
    return comment ? line.first(2) : QByteArrayView();
}

} // namespace corvane
