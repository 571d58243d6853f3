# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(app SOURCES CommandLineTest.cpp USES app)
