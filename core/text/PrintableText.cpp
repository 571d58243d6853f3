// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text/PrintableText.h"

#include "devices/Literals.h"

namespace corvane {

namespace {

bool isPlain(char32_t c)
{
    switch (QChar::category(c)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate: // without its other half
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return !QChar::isNonCharacter(c);
    }
}

QString numbered(char32_t c)
{
    const auto number = static_cast<uint>(c);
    return number <= 0xff ? u"\\x%1"_s.arg(number, 2, 16, QLatin1Char('0'))
                          : u"\\u%1"_s.arg(number, 4, 16, QLatin1Char('0'));
}

/// `kept` and what is plain stand as they are.
QString escaped(const QString &text, QStringView kept)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        const char32_t c = isPair ? QChar::surrogateToUcs4(text.at(i), text.at(i + 1))
                                  : char32_t{text.at(i).unicode()};
        if (isPlain(c) || kept.contains(text.at(i)))
            result += QStringView(text).mid(i, isPair ? 2 : 1);
        else
            result += numbered(c);
        i += isPair ? 1 : 0;
    }
    return result;
}

} // namespace

QString printableText::field(const QString &text)
{
    QString line = text;
    line.replace(u'\\', u"\\\\"_s)
        .replace(u'\t', u"\\t"_s)
        .replace(u'\r', u"\\r"_s)
        .replace(u'\n', u"\\n"_s);
    return escaped(line, {});
}

QString printableText::message(const QString &text)
{
    QString lines = text;
    lines.replace(u"\r\n"_s, u"\n"_s);
    return escaped(lines, u"\t\n");
}

} // namespace corvane
