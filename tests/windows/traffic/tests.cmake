# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(windows/traffic SOURCES TrafficWindowTest.cpp USES windows/traffic)
