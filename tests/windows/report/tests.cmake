# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(windows/report SOURCES ReportWindowTest.cpp USES windows/report windows/board)
