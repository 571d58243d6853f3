# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(
  bench
  SOURCES
  BenchTest.cpp
  BoardTest.cpp
  ChamberTest.cpp
  ConsoleTest.cpp
  DeviceLinkTest.cpp
  FaultTest.cpp
  PlusPlusTest.cpp
  PtyPortTest.cpp
  RecordingTest.cpp
  ReplayTest.cpp
  USES
  bench)
add_dependencies(test_bench corvane-bench)
target_compile_definitions(test_bench PRIVATE BENCH_PROGRAM="$<TARGET_FILE:corvane-bench>")
