# What every target of the project shares: language, warnings, Qt's strictness, sanitizers, ccache
# and precompiled headers. Targets are made with zvl_library, zvl_executable and zvl_test.

include(CheckPIESupported)
include(GoogleTest)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
check_pie_supported()
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_program(ZVL_MOLD mold)
find_program(ZVL_CCACHE ccache)
if(ZVL_CCACHE)
  # Precompiled headers carry time stamps; without this slack nothing behind them is ever a hit.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      ${ZVL_CCACHE})
endif()

add_library(zvl_options INTERFACE)
target_include_directories(zvl_options INTERFACE "${CMAKE_SOURCE_DIR}")
# -fPIC also for programs, where CMake alone would say -fPIE: the precompiled headers are shared.
target_compile_options(zvl_options INTERFACE -Wall -Wextra -Werror -fPIC)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(zvl_options INTERFACE -fpch-preprocess)
else()
  # For ccache: the same sources make the same precompiled header.
  target_compile_options(zvl_options INTERFACE "SHELL:-Xclang -fno-pch-timestamp")
endif()
target_compile_definitions(zvl_options INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_URL_CAST_FROM_STRING)
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  # What nobody calls, and libraries that nobody needs, cost start and memory.
  target_compile_options(zvl_options INTERFACE -ffunction-sections -fdata-sections)
  target_link_options(zvl_options INTERFACE
    -Wl,--gc-sections,--as-needed,-z,pack-relative-relocs)
  # Hardening: a peer's bytes and the user's secrets are handled here.
  target_compile_options(zvl_options INTERFACE -D_FORTIFY_SOURCE=2 -fstack-protector-strong)
  target_link_options(zvl_options INTERFACE -Wl,-z,relro,-z,now)
elseif(ZVL_MOLD)
  target_link_options(zvl_options INTERFACE -fuse-ld=mold)
endif()
if(ZVL_SANITIZE)
  # -g1: lines for the reports; nobody steps through instrumented code.
  target_compile_options(zvl_options INTERFACE -fsanitize=${ZVL_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all -O1 -g1)
  target_link_options(zvl_options INTERFACE -fsanitize=${ZVL_SANITIZE})
  # As gcc names them.
  string(TOUPPER "${ZVL_SANITIZE}" sanitizer)
  string(REGEX MATCH "ADDRESS|THREAD" sanitizer "${sanitizer}")
  target_compile_definitions(zvl_options INTERFACE __SANITIZE_${sanitizer}__=1)
endif()

# One precompiled header a kind of target: STD knows no Qt, CORE knows Qt Core, QT all of Qt's
# widgets. The kind also says what a target may include.
set(ZVL_PCH_STD <algorithm> <atomic> <chrono> <cstdint> <functional> <map> <memory> <mutex>
  <optional> <string> <string_view> <thread> <unordered_map> <vector> <fmt/format.h>)
set(ZVL_PCH_CORE ${ZVL_PCH_STD} <QtCore/QtCore>)
set(ZVL_PCH_QT ${ZVL_PCH_CORE} <QtGui/QtGui> <QtWidgets/QtWidgets>)
set(ZVL_LIBS_STD fmt::fmt Threads::Threads)
set(ZVL_LIBS_CORE ${ZVL_LIBS_STD} Qt5::Core)
set(ZVL_LIBS_QT ${ZVL_LIBS_CORE} Qt5::Gui Qt5::Widgets)

# Windows wait for people: what counts there is how much of the program is in memory.
function(zvl_optimise target kind)
  if(CMAKE_BUILD_TYPE STREQUAL "Release" AND kind STREQUAL "QT")
    target_compile_options(${target} PRIVATE -Os)
  endif()
endfunction()

foreach(kind STD CORE QT)
  file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/pch/${kind}.cpp" CONTENT "")
  add_library(zvl_pch_${kind} OBJECT "${CMAKE_BINARY_DIR}/pch/${kind}.cpp")
  set_target_properties(zvl_pch_${kind} PROPERTIES AUTOMOC OFF)
  target_link_libraries(zvl_pch_${kind} PUBLIC zvl_options ${ZVL_LIBS_${kind}})
  target_precompile_headers(zvl_pch_${kind} PRIVATE ${ZVL_PCH_${kind}})
  zvl_optimise(zvl_pch_${kind} ${kind})
endforeach()

function(zvl_apply_kind target kind)
  if(kind STREQUAL "STD")
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
  endif()
  target_precompile_headers(${target} REUSE_FROM zvl_pch_${kind})
  zvl_optimise(${target} ${kind})
endfunction()

# zvl_library(name STD|CORE|QT SOURCES ... [LINKS ...] [PRIVATE_LINKS ...])
function(zvl_library name kind)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name}
    PUBLIC zvl_options ${ZVL_LIBS_${kind}} ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
  zvl_apply_kind(${name} ${kind})
endfunction()

# zvl_executable(name STD|CORE|QT SOURCES ... LINKS ...)
function(zvl_executable name kind)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE zvl_options ${ZVL_LIBS_${kind}} ${ARG_LINKS})
  zvl_apply_kind(${name} ${kind})
endfunction()

# What has threads and is worth the thread sanitizer; its tests carry the label "threads".
add_custom_target(zvl_threaded_tests)

# zvl_test(name STD|CORE|QT SOURCES ... LINKS ... [LOCK resource] [THREADS])
# A GoogleTest program whose cases ctest lists one by one. LOCK serialises programs that share a
# resource of the machine, such as the port file. THREADS makes it one of zvl_threaded_tests. QT
# programs get a QApplication on the offscreen platform; every program gets a HOME and XDG folders
# of its own.
function(zvl_test name kind)
  cmake_parse_arguments(ARG "THREADS" "LOCK" "SOURCES;LINKS" ${ARGN})
  if(kind STREQUAL "QT")
    set(main zvl_test_main_qt Qt5::Test)
  else()
    set(main zvl_test_main)
  endif()
  zvl_executable(${name} ${kind} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS} ${main})
  target_compile_definitions(${name} PRIVATE ZVL_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data")
  set(properties TIMEOUT 120)
  if(ARG_LOCK)
    list(APPEND properties RESOURCE_LOCK ${ARG_LOCK})
  endif()
  if(ARG_THREADS)
    list(APPEND properties LABELS threads)
    add_dependencies(zvl_threaded_tests ${name})
  endif()
  if(ZVL_SANITIZE STREQUAL "thread")
    list(APPEND properties
      ENVIRONMENT "TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/tsan.supp")
  endif()
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
