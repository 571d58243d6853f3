# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(core/channels SOURCES TrafficLogTest.cpp USES core/channels)
