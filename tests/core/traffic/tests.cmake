# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(core/traffic SOURCES TrafficTest.cpp USES core/traffic)
