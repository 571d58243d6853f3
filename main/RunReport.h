#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace corvane {

/// A list as it was run: the grid and, for its checks, how they went. Plain values, so that the
/// reports are pure functions of it.
struct RunReport
{
    struct Check
    {
        enum class Result { Passed, Failed, NotRun };

        int row = 0;
        QString command;
        QString expected;
        QString tolerance;
        QString reply;
        Result result = Result::NotRun;
    };

    QString listName;
    QString channel;
    /// The grid, its header row first.
    std::vector<QStringList> rows;
    std::vector<Check> checks;
    /// Why the run ended early other than by a failed check; empty when it did not.
    QString fault;
    double seconds = 0;

    /// The grid as comma-separated values that a spreadsheet opens as they are: UTF-8, lines ended
    /// by CR LF, cells quoted as needed, a blank in front of what would be taken for a formula.
    [[nodiscard]] QByteArray toCsv() const;
    /// The checks as a JUnit report: one test case a check row, one more for a fault.
    [[nodiscard]] QByteArray toJUnit() const;
};

} // namespace corvane
