# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(windows/setup SOURCES GpibAdaptersTest.cpp frmPortConfigTest.cpp USES windows/setup)
