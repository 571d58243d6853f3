# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(core/setup SOURCES GpibSearchTest.cpp modWinsockAPITest.cpp USES windows/setup)
