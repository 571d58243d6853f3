corvane_test(
  main
  SOURCES
  ResponseTest.cpp
  USES
  main)
