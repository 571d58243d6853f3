# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(windows/lists SOURCES CommandListAreaTest.cpp USES windows/lists)
