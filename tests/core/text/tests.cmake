# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(core/text SOURCES NumbersTest.cpp PrintableTextTest.cpp USES core/text)
