# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(windows/about SOURCES frmAboutTest.cpp USES windows/about)
target_compile_definitions(test_windows_about PRIVATE PROJECT_VERSION_TEXT="${PROJECT_VERSION}")
