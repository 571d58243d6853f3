# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(windows/board SOURCES BoardWindowTest.cpp PanelsTest.cpp USES windows/board)
