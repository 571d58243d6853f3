corvane_test(about SOURCES frmAboutTest.cpp USES about)
target_compile_definitions(test_about PRIVATE PROJECT_VERSION_TEXT="${PROJECT_VERSION}")
