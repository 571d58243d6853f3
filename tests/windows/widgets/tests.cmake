# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(windows/widgets SOURCES EntryRulesTest.cpp QtDialogsTest.cpp ResponseTest.cpp TextGridTest.cpp WindowPlacesTest.cpp USES windows/widgets)
