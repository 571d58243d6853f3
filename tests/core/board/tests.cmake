# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(core/board SOURCES BoardLinkTest.cpp BoardWireTest.cpp CalibrationFormulasTest.cpp CalibrationScanTest.cpp CalibrationTest.cpp DigitalTestsTest.cpp USES windows/board)
