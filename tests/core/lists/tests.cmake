corvane_test(core/lists SOURCES CheckRowTest.cpp ListStepTest.cpp USES core/lists)
