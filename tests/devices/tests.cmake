# SPDX-License-Identifier: GPL-3.0-or-later
corvane_test(devices SOURCES ClockTest.cpp FilesFolderTest.cpp GpibControlTest.cpp LibraryAdapterTest.cpp PlusPlusAdapterTest.cpp QtSerialPortTest.cpp QtTcpClientTest.cpp SerialSettingsTest.cpp WholeFileTest.cpp USES windows/widgets)

# Loaded by the tests in place of the installed libraries; lies beside the test.
add_library(standins MODULE devices/standins.cpp)
target_compile_features(standins PRIVATE cxx_std_20)
set_target_properties(standins PROPERTIES AUTOMOC OFF CXX_VISIBILITY_PRESET default LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
add_dependencies(test_devices standins)
