// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/RunOutputs.h"

#include "app/CommandLine.h"
#include "devices/Literals.h"
#include "devices/RegularFile.h"
#include "devices/WholeFile.h"

#include <QFileInfo>
#include <QTextStream>

#include <array>

namespace corvane {

namespace {

const QString standardOutput = u"-"_s;

struct Output
{
    QString option;
    QString path;
};

/// Those that were asked for.
QList<Output> outputsOf(const CommandLine &line)
{
    QList<Output> outputs = {{u"--save"_s, line.saveFile},
                             {u"--csv"_s, line.csvFile},
                             {u"--junit"_s, line.junitFile},
                             {u"--record"_s, line.recordFile}};
    outputs.removeIf([](const Output &output) { return output.path.isEmpty(); });
    return outputs;
}

/// One file has one of these, however its path is written.
QString placeOf(const QString &path)
{
    if (path == standardOutput)
        return path;
    const QFileInfo file(wholeFile::target(path));
    if (file.exists())
        return file.canonicalFilePath();
    return QFileInfo(file.absolutePath()).canonicalFilePath() + u'/' + file.fileName();
}

bool isSamePlace(const QString &one, const QString &other)
{
    if (regularFile::isSame(one, other))
        return true;
#ifdef Q_OS_WIN
    constexpr auto sensitivity = Qt::CaseInsensitive;
#else
    constexpr auto sensitivity = Qt::CaseSensitive;
#endif
    return placeOf(one).compare(placeOf(other), sensitivity) == 0;
}

} // namespace

RunOutputs::RunOutputs(const CommandLine &line, QTextStream &out)
    : m_line(line)
    , m_out(out)
{
}

QString RunOutputs::refusal() const
{
    if (regularFile::isSame(m_line.list, standardOutput))
        return u"standard output goes into the list itself"_s;
    const QList<Output> outputs = outputsOf(m_line);
    for (qsizetype each = 0; each < outputs.size(); ++each) {
        const Output &output = outputs.at(each);
        const auto because = [&](const QString &reason) {
            return u"%1 %2: %3"_s.arg(output.option, output.path, reason);
        };
        // The settings may be written back over the list that they were read from.
        if (output.path != m_line.saveFile && isSamePlace(output.path, m_line.list))
            return because(u"that is the list itself"_s);
        if (isSamePlace(output.path, m_line.replayFile))
            return because(u"that is the recording to be replayed"_s);
        for (qsizetype before = 0; before < each; ++before) {
            if (isSamePlace(output.path, outputs.at(before).path))
                return because(u"%1 goes there"_s.arg(outputs.at(before).option));
        }
        if (output.path == standardOutput)
            continue;
        if (regularFile::isSame(output.path, standardOutput))
            return because(u"standard output goes there"_s);
        if (const QString fault = wholeFile::refusal(output.path); !fault.isEmpty())
            return because(fault);
    }
    return {};
}

bool RunOutputs::useStandardOutput() const
{
    const QList<Output> outputs = outputsOf(m_line);
    return std::ranges::any_of(outputs,
                               [](const Output &output) { return output.path == standardOutput; });
}

QString RunOutputs::write(const QString &path, const QByteArray &bytes)
{
    if (path.isEmpty())
        return {};
    if (path != standardOutput) {
        const QString fault = wholeFile::write(path, bytes);
        return fault.isEmpty() ? QString() : u"%1: %2"_s.arg(path, fault);
    }
    QIODevice *device = m_out.device();
    auto *file = qobject_cast<QFileDevice *>(device);
    const bool written = device->write(bytes) == bytes.size() && (file == nullptr || file->flush());
    return written ? QString() : u"standard output: %1"_s.arg(device->errorString());
}

} // namespace corvane
