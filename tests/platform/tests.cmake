corvane_test(
  platform
  SOURCES
  ClockTest.cpp
  GpibControlTest.cpp
  LibraryAdapterTest.cpp
  PlusPlusAdapterTest.cpp
  Pty.cpp
  QtDialogsTest.cpp
  QtSerialPortTest.cpp
  QtTcpClientTest.cpp
  ScriptedController.cpp
  ScriptedController.h
  SerialSettingsTest.cpp
  USES
  platform)

# Libraries that the tests load in place of the installed ones; they lie beside the test.
foreach(name ib visa)
  add_library(standin_${name} MODULE platform/standins/${name}.cpp)
  target_compile_features(standin_${name} PRIVATE cxx_std_20)
  set_target_properties(standin_${name} PROPERTIES AUTOMOC OFF LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  add_dependencies(test_platform standin_${name})
endforeach()
