// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace corvane {

struct RunReport;

/// The run as a JUnit file, in the form that all of its readers take: one suite with a test case
/// for each check. The case "run" tells of what went wrong besides, and stands, passed, for a list
/// without a check.
QByteArray junitReport(const RunReport &report);

} // namespace corvane
