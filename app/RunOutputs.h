// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QTextStream;

namespace corvane {

struct CommandLine;

/// Where a run's results go: the files of --save, --csv, --junit and --record, or standard output
/// for "-". It knows whether they can be written before the run begins, and writes them afterwards.
class RunOutputs
{
public:
    /// The command line and standard output must outlive the object.
    RunOutputs(const CommandLine &line, QTextStream &out);

    /// Why the results could not be kept as things are now, by the option; empty when they could.
    /// Two results in one place and a report in place of the list are refused, too. Leaves every
    /// file as it is.
    [[nodiscard]] QString refusal() const;
    /// True when a result goes to standard output: what is said on the way goes elsewhere.
    [[nodiscard]] bool useStandardOutput() const;
    /// Writes a result whole. Returns why it failed; empty when it is written, or not asked for.
    [[nodiscard]] QString write(const QString &path, const QByteArray &bytes);

private:
    const CommandLine &m_line;
    QTextStream &m_out;
};

} // namespace corvane
