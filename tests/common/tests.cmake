corvane_test(common SOURCES EntryRulesTest.cpp NumbersTest.cpp PrintableTextTest.cpp USES common)
