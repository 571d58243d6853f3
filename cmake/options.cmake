# What every target of ours is built with, in one place.
add_library(corvane_options INTERFACE)
target_compile_features(corvane_options INTERFACE cxx_std_20)
target_include_directories(corvane_options INTERFACE ${PROJECT_SOURCE_DIR})
target_link_libraries(corvane_options INTERFACE Qt6::Widgets Qt6::Network Qt6::SerialPort)
target_compile_definitions(
  corvane_options
  INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
            QT_DISABLE_DEPRECATED_BEFORE=0x060000)
target_compile_options(corvane_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor)
if(CORVANE_WERROR)
  target_compile_options(corvane_options INTERFACE -Werror)
endif()
if(CORVANE_SANITIZE)
  target_compile_options(corvane_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(corvane_options INTERFACE -fsanitize=address,undefined)
endif()

# One precompiled Qt header, shared by every library.
# Not file(WRITE): a file written anew at each configuration would have everything built again.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/pch/empty.cpp CONTENT "\n")
add_library(corvane_pch OBJECT ${PROJECT_BINARY_DIR}/pch/empty.cpp)
set_target_properties(corvane_pch PROPERTIES AUTOMOC OFF)
target_link_libraries(corvane_pch PRIVATE corvane_options)
target_precompile_headers(corvane_pch PRIVATE <QtWidgets> <QtNetwork> <QtSerialPort> <algorithm> <array> <functional> <memory> <optional> <span> <vector>)

# corvane_library(NAME SOURCES... ): one library a folder. USES names the folders it may include.
function(corvane_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_library(corvane_${name} STATIC ${ARG_SOURCES})
  target_link_libraries(corvane_${name} PUBLIC corvane_options)
  foreach(used IN LISTS ARG_USES)
    target_link_libraries(corvane_${name} PUBLIC corvane_${used})
  endforeach()
  target_precompile_headers(corvane_${name} REUSE_FROM corvane_pch)
endfunction()
