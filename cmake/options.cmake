# SPDX-License-Identifier: GPL-3.0-or-later
# What every target of ours is built with, in one place.
add_library(corvane_options INTERFACE)
target_compile_features(corvane_options INTERFACE cxx_std_20)
target_include_directories(corvane_options INTERFACE ${PROJECT_SOURCE_DIR})
target_link_libraries(corvane_options INTERFACE Qt6::Network Qt6::SerialPort)
target_compile_definitions(
  corvane_options
  INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
            QT_DISABLE_DEPRECATED_BEFORE=0x060000)
target_compile_options(corvane_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor)
if(UNIX)
  # The same code goes into the program and into the module with the windows; one setting everywhere, as
  # the precompiled headers want it.
  target_compile_options(corvane_options INTERFACE -fPIC)
endif()
if(CORVANE_WERROR)
  target_compile_options(corvane_options INTERFACE -Werror)
endif()
if(CORVANE_SANITIZE)
  target_compile_options(corvane_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(corvane_options INTERFACE -fsanitize=address,undefined)
endif()

# The precompiled Qt headers: corvane_core_pch without a widget, corvane_windows_pch with them.
# Not file(WRITE): a file written anew at each configuration would have everything built again.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/pch/empty.cpp CONTENT "\n")
foreach(pch corvane_core_pch corvane_windows_pch)
  add_library(${pch} OBJECT ${PROJECT_BINARY_DIR}/pch/empty.cpp)
  set_target_properties(${pch} PROPERTIES AUTOMOC OFF)
  target_link_libraries(${pch} PRIVATE corvane_options)
endforeach()
set(standard_headers <algorithm> <array> <functional> <memory> <optional> <span> <vector>)
target_precompile_headers(corvane_core_pch PRIVATE <QtCore> <QtNetwork> <QtSerialPort> ${standard_headers})
target_link_libraries(corvane_windows_pch PRIVATE Qt6::Widgets)
target_precompile_headers(corvane_windows_pch PRIVATE <QtWidgets> <QtNetwork> <QtSerialPort> ${standard_headers})

# corvane_use(TARGET FOLDERS...): links the folders' libraries.
function(corvane_use target)
  foreach(folder IN LISTS ARGN)
    string(REPLACE / _ used corvane_${folder})
    target_link_libraries(${target} PUBLIC ${used})
  endforeach()
endfunction()

# corvane_library(FOLDER SOURCES... USES folders...): one library a folder, "corvane_core_text" of
# core/text. Qt Widgets is for windows/ and app/window/ alone: what wants a widget elsewhere does not
# build.
function(corvane_library folder)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  string(REPLACE / _ name corvane_${folder})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC corvane_options)
  corvane_use(${name} ${ARG_USES})
  if(folder MATCHES "^(windows/|app/window$)")
    target_link_libraries(${name} PUBLIC Qt6::Widgets)
    target_precompile_headers(${name} REUSE_FROM corvane_windows_pch)
  else()
    target_precompile_headers(${name} REUSE_FROM corvane_core_pch)
  endif()
endfunction()
