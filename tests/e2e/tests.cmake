# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(
  e2e
  SOURCES
  BoardEndToEndTest.cpp
  ChannelsEndToEndTest.cpp
  EndToEndDesk.h
  ListsEndToEndTest.cpp
  ProgramTest.cpp
  ScreensTest.cpp
  USES
  app/window)
target_compile_definitions(test_e2e PRIVATE PROJECT_FOLDER="${PROJECT_SOURCE_DIR}")
add_dependencies(test_e2e corvane) # it is started as users start it
if(TARGET corvane-trend)
  target_compile_definitions(test_e2e PRIVATE CORVANE_HAS_TREND)
endif()
