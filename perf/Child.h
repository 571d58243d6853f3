// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"
#include "perf/Harness.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <optional>

namespace corvane::perf {

/// What a program took, from its start to its end.
struct Usage
{
    bool succeeded = false; ///< it ended by itself, with exit code 0
    double processorSeconds = 0;
    QByteArray output; ///< its standard output
};

/// Another program, measured: a peer to hold a figure against, or a process that has to start anew.
/// Its standard error is ours. It is ended with the object. One at a time is measured.
class Child
{
public:
    enum class Input { Empty, Told };

    /// A program and its arguments. `Told`: its standard input stays open for tell().
    explicit Child(QStringList command, Input input = Input::Empty)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        if (input == Input::Empty)
            m_process.setStandardInputFile(QProcess::nullDevice());
        const QString program = command.takeFirst();
        m_process.start(program, command);
    }
    ~Child()
    {
        m_process.terminate();
        m_process.waitForFinished(-1);
    }
    Q_DISABLE_COPY_MOVE(Child)

    /// Writes a line to its standard input.
    void tell(const QByteArray &line)
    {
        m_process.write(line + '\n');
        m_process.waitForBytesWritten(-1);
    }
    /// What it has printed, as far as it was waited for.
    [[nodiscard]] const QByteArray &output() const { return m_text; }
    /// Waits until it has printed the text. False when it ended without, or could not start.
    bool waitForOutput(const QByteArray &text)
    {
        takeOutput();
        while (!m_text.contains(text)) {
            if (!m_process.waitForReadyRead(-1))
                return false;
            takeOutput();
        }
        return true;
    }
    /// The most memory that it has had resident; 0 when it has ended.
    [[nodiscard]] double peakBytes() const
    {
        QFile status(u"/proc/%1/status"_s.arg(m_process.processId()));
        if (!status.open(QIODevice::ReadOnly))
            return 0;
        const QByteArray text = status.readAll();
        const qsizetype at = text.indexOf("VmHWM:");
        return at < 0 ? 0 : std::strtod(text.constData() + at + 6, nullptr) * 1024;
    }
    /// Waits until it ends by itself.
    Usage finish()
    {
        m_process.waitForFinished(-1);
        takeOutput();
        const bool ended = m_process.error() == QProcess::UnknownError;
        return {ended && m_process.exitCode() == 0,
                processorSeconds(RUSAGE_CHILDREN) - m_childrenBefore, m_text};
    }

private:
    void takeOutput() { m_text += m_process.readAllStandardOutput(); }

    double m_childrenBefore = processorSeconds(RUSAGE_CHILDREN);
    QProcess m_process;
    QByteArray m_text;
};

/// The path of a program that was built beside this one.
inline QString programBeside(const QString &name)
{
    return QFileInfo(QFile::symLinkTarget(u"/proc/self/exe"_s)).path() + u'/' + name;
}

/// The number that follows "name=" in a program's output.
inline std::optional<double> figure(const QByteArray &output, const QByteArray &name)
{
    const qsizetype at = output.indexOf(name + '=');
    if (at < 0)
        return std::nullopt;
    return std::strtod(output.constData() + at + name.size() + 1, nullptr);
}

} // namespace corvane::perf
