// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/JUnitReport.h"

#include "core/lists/RunReport.h"
#include "core/text/PrintableText.h"
#include "devices/Literals.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace corvane {

namespace {

using Check = RunReport::Check;
using Verdict = GridModel::Verdict;

/// The parts of the file, each from the values that it shows.
class Writer
{
public:
    explicit Writer(const RunReport &report)
        : m_report(report)
        , m_xml(&m_bytes)
    {
        m_xml.setAutoFormatting(true);
    }

    QByteArray write()
    {
        m_xml.writeStartDocument();
        m_xml.writeStartElement(u"testsuites"_s);
        m_xml.writeStartElement(u"testsuite"_s);
        writeSuite();
        writeProperties();
        for (const Check &check : m_report.checks)
            writeCheck(check);
        if (hasRunCase())
            writeRun();
        // Some readers insist on them.
        m_xml.writeTextElement(u"system-out"_s, {});
        m_xml.writeTextElement(u"system-err"_s, {});
        m_xml.writeEndDocument();
        return m_bytes;
    }

private:
    void writeSuite()
    {
        const qsizetype cases = std::ssize(m_report.checks) + (hasRunCase() ? 1 : 0);
        attribute("name", m_report.listName);
        attribute("package", u"corvane"_s);
        attribute("id", u"0"_s);
        // Without a zone, as readers take it; in UTC, whatever the computer's zone is.
        attribute("timestamp", m_report.began.toUTC().toString(u"yyyy-MM-ddTHH:mm:ss"_s));
        attribute("hostname", m_report.hostName.isEmpty() ? u"localhost"_s : m_report.hostName);
        attribute("tests", QString::number(cases));
        attribute("failures", QString::number(count(Verdict::Failed)));
        attribute("errors", QString::number(m_report.fault.isEmpty() ? 0 : 1));
        attribute("skipped", QString::number(count(Verdict::None)));
        attribute("time", seconds(m_report.seconds));
    }

    void writeProperties()
    {
        m_xml.writeStartElement(u"properties"_s);
        for (const RunReport::Property &property : m_report.properties) {
            m_xml.writeEmptyElement(u"property"_s);
            attribute("name", property.name);
            attribute("value", property.value);
        }
        m_xml.writeEndElement();
    }

    void writeCheck(const Check &check)
    {
        beginCase(u"row %1: %2"_s.arg(check.row).arg(check.command), check.seconds);
        if (check.verdict == Verdict::Failed)
            writeFault("failure", "check",
                       u"expected \"%1\", tolerance \"%2\", reply \"%3\""_s.arg(
                           check.expected, check.tolerance, check.reply));
        else if (check.verdict == Verdict::None)
            m_xml.writeEmptyElement(u"skipped"_s);
        m_xml.writeEndElement();
    }

    void writeRun()
    {
        double rest = m_report.seconds;
        for (const Check &check : m_report.checks)
            rest -= check.seconds;
        beginCase(u"run"_s, std::max(rest, 0.0));
        if (!m_report.fault.isEmpty())
            writeFault("error", "run", m_report.fault);
        m_xml.writeEndElement();
    }

    void beginCase(const QString &name, double time)
    {
        m_xml.writeStartElement(u"testcase"_s);
        attribute("classname", m_report.listName);
        attribute("name", name);
        attribute("time", seconds(time));
    }

    void writeFault(const char *element, const char *type, const QString &message)
    {
        m_xml.writeEmptyElement(QLatin1String(element));
        attribute("message", message);
        attribute("type", QLatin1String(type));
    }

    /// What XML cannot hold, a device may send.
    void attribute(const char *name, const QString &value)
    {
        m_xml.writeAttribute(QLatin1String(name), printableText::message(value));
    }

    static QString seconds(double time) { return QString::number(time, 'f', 3); }

    [[nodiscard]] qsizetype count(Verdict verdict) const
    {
        return std::ranges::count(m_report.checks, verdict, &Check::verdict);
    }

    [[nodiscard]] bool hasRunCase() const
    {
        return m_report.checks.empty() || !m_report.fault.isEmpty();
    }

    const RunReport &m_report;
    QByteArray m_bytes;
    QXmlStreamWriter m_xml;
};

} // namespace

QByteArray junitReport(const RunReport &report)
{
    return Writer(report).write();
}

} // namespace corvane
