# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(core/report SOURCES CalibrationReportTest.cpp USES core/report)
