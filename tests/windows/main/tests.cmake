# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(windows/main SOURCES BenchWindowTest.cpp GpibChannelTest.cpp MainTest.cpp MainWindowsTest.cpp SerialChannelTest.cpp TcpChannelTest.cpp ChannelDesk.h USES windows/main)
