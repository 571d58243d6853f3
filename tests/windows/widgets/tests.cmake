corvane_test(windows/widgets SOURCES EntryRulesTest.cpp QtDialogsTest.cpp TextGridTest.cpp USES windows/widgets)
