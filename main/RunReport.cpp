#include "main/RunReport.h"

#include "common/Numbers.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace corvane {

namespace {

/// A spreadsheet takes a cell such as "= SP" for a formula, and with a blank in front for a text.
QString csvText(const QString &text)
{
    const bool formula = text.size() > 1 && QStringView(u"=+-@").contains(text.front()) &&
                         !numbers::numericValue(text);
    return formula ? u' ' + text : text;
}

QString csvCell(const QString &cell)
{
    static const QString special = QStringLiteral(",\"\r\n");
    QString text = csvText(cell);
    const bool plain =
        std::none_of(text.begin(), text.end(), [](QChar c) { return special.contains(c); }) &&
        text == text.trimmed();
    if (plain)
        return text;
    return u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

/// A text as XML can hold it: control characters, which it cannot, become "?".
QString xmlText(QString text)
{
    for (QChar &c : text) {
        if (c.unicode() < 32 && c != u'\t' && c != u'\n' && c != u'\r')
            c = u'?';
    }
    return text;
}

void writeCase(QXmlStreamWriter &xml, const RunReport &report, const RunReport::Check &check)
{
    xml.writeStartElement(QStringLiteral("testcase"));
    xml.writeAttribute(QStringLiteral("classname"), xmlText(report.listName));
    xml.writeAttribute(QStringLiteral("name"),
                       xmlText(QStringLiteral("row %1: %2").arg(check.row).arg(check.command)));
    const QString details =
        xmlText(QStringLiteral("expected \"%1\", tolerance \"%2\", reply \"%3\"")
                    .arg(check.expected, check.tolerance, check.reply));
    if (check.result == RunReport::Check::Result::Failed) {
        xml.writeStartElement(QStringLiteral("failure"));
        xml.writeAttribute(QStringLiteral("message"), details);
        xml.writeAttribute(QStringLiteral("type"), QStringLiteral("check"));
        xml.writeEndElement();
    } else if (check.result == RunReport::Check::Result::NotRun) {
        xml.writeEmptyElement(QStringLiteral("skipped"));
    }
    xml.writeEndElement();
}

} // namespace

QByteArray RunReport::toCsv() const
{
    const auto isAscii = [](QChar c) { return c.unicode() < 128; };
    QString csv;
    for (const QStringList &row : rows) {
        QStringList cells;
        std::transform(row.begin(), row.end(), std::back_inserter(cells), csvCell);
        csv += cells.join(u',') + QStringLiteral("\r\n");
    }
    // Without the mark a spreadsheet reads what is beyond ASCII by the system's code page.
    if (!std::all_of(csv.begin(), csv.end(), isAscii))
        csv.prepend(QChar::ByteOrderMark);
    return csv.toUtf8();
}

QByteArray RunReport::toJUnit() const
{
    const auto count = [this](Check::Result result) {
        return std::count_if(checks.begin(), checks.end(),
                             [result](const Check &check) { return check.result == result; });
    };
    const qsizetype faults = fault.isEmpty() ? 0 : 1;
    const QString tests = QString::number(static_cast<qsizetype>(checks.size()) + faults);
    const QString failures = QString::number(count(Check::Result::Failed));

    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuites"));
    xml.writeStartElement(QStringLiteral("testsuite"));
    xml.writeAttribute(QStringLiteral("name"), xmlText(listName));
    xml.writeAttribute(QStringLiteral("tests"), tests);
    xml.writeAttribute(QStringLiteral("failures"), failures);
    xml.writeAttribute(QStringLiteral("errors"), QString::number(faults));
    xml.writeAttribute(QStringLiteral("skipped"), QString::number(count(Check::Result::NotRun)));
    xml.writeAttribute(QStringLiteral("time"), QString::number(seconds, 'f', 3));
    xml.writeAttribute(QStringLiteral("hostname"), channel);
    for (const Check &check : checks)
        writeCase(xml, *this, check);
    if (faults > 0) {
        xml.writeStartElement(QStringLiteral("testcase"));
        xml.writeAttribute(QStringLiteral("classname"), xmlText(listName));
        xml.writeAttribute(QStringLiteral("name"), QStringLiteral("run"));
        xml.writeStartElement(QStringLiteral("error"));
        xml.writeAttribute(QStringLiteral("message"), xmlText(fault));
        xml.writeAttribute(QStringLiteral("type"), QStringLiteral("run"));
        xml.writeEndElement();
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return bytes;
}

} // namespace corvane
