# SPDX-License-Identifier: GPL-3.0-or-later
if(TARGET corvane_windows_trend)
  corvane_test(windows/trend SOURCES TrendWindowTest.cpp USES windows/trend)
endif()
