# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(core/lists SOURCES CheckRowTest.cpp ListFileTest.cpp ListStepTest.cpp ListTextTest.cpp RunReportTest.cpp TransferEngineTest.cpp USES core/lists)
