# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(core/trend SOURCES TrendTest.cpp USES core/trend)
