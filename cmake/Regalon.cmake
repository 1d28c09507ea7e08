# The compile rules of the whole project and the few commands that every room uses.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")

find_program(REGALON_CCACHE ccache)
if(REGALON_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Paths relative to the sources: every clone and every build folder of this machine shares what one of them compiled.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    "${CMAKE_COMMAND}" -E env "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" CCACHE_NOHASHDIR=1 "${REGALON_CCACHE}")
endif()

find_package(Threads REQUIRED)

# Rules for every target.
add_library(regalon_rules INTERFACE)
target_compile_options(regalon_rules INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wconversion -Wno-sign-conversion
  # GCC 12 warns of overlapping copies inside std::string's own operator+ once it is optimised (its bug 105329).
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>
  $<$<BOOL:${REGALON_WERROR}>:-Werror>)
if(REGALON_SANITIZE)
  target_compile_options(regalon_rules INTERFACE
    -fsanitize=${REGALON_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(regalon_rules INTERFACE -fsanitize=${REGALON_SANITIZE})
  # GCC 12 reports false maybe-uninitialized warnings in sanitized code.
  target_compile_options(regalon_rules INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# Rules for code that uses Qt: no implicit ASCII casts, no connect without a context object.
add_library(regalon_qt_rules INTERFACE)
target_link_libraries(regalon_qt_rules INTERFACE regalon_rules)
target_compile_definitions(regalon_qt_rules INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_CAST_FROM_BYTEARRAY
  QT_NO_CONTEXTLESS_CONNECT QT_NO_FOREACH QT_NO_KEYWORDS QT_STRICT_ITERATORS
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(REGALON_CLIENT OR REGALON_ARTWORK OR REGALON_BENCH)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets)
  if(REGALON_TESTS)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
  endif()
  # Qt 6.4 has a command with another name for this from 6.5 on.
  set(CMAKE_AUTOMOC OFF)
endif()
if(REGALON_TESTS)
  find_package(GTest REQUIRED)
  include(GoogleTest)
endif()

# regalon_add_room(folder): takes a room into the build.
function(regalon_add_room folder)
  if(EXISTS "${CMAKE_SOURCE_DIR}/${folder}/CMakeLists.txt")
    add_subdirectory("${CMAKE_SOURCE_DIR}/${folder}" "${CMAKE_BINARY_DIR}/${folder}")
  endif()
endfunction()

function(regalon_prepare_target target)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "QT" "" "SOURCES;LINK;PRIVATE_LINK")
  target_sources(${target} PRIVATE ${ARG_SOURCES})
  if(ARG_QT)
    target_link_libraries(${target} PRIVATE regalon_qt_rules)
    set_target_properties(${target} PROPERTIES AUTOMOC ON AUTORCC ON)
  else()
    target_link_libraries(${target} PRIVATE regalon_rules)
  endif()
endfunction()

# regalon_add_library(name [QT] SOURCES files... [LINK public libraries...] [PRIVATE_LINK libraries...])
# QT: the target uses Qt (strict macros, moc). LINK is public, so includes and layers pass through it.
function(regalon_add_library name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "QT" "" "SOURCES;LINK;PRIVATE_LINK")
  add_library(${name} STATIC)
  regalon_prepare_target(${name} ${ARGN})
  target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE ${ARG_PRIVATE_LINK})
endfunction()

# regalon_add_executable(name [QT] SOURCES files... [LINK libraries...])
function(regalon_add_executable name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "QT" "" "SOURCES;LINK;PRIVATE_LINK")
  add_executable(${name})
  regalon_prepare_target(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE ${ARG_LINK} ${ARG_PRIVATE_LINK})
endfunction()

# regalon_add_fuzzer(name [QT] SOURCES files... LINK libraries... INSTRUMENT targets...)
# A libFuzzer program, built where REGALON_FUZZERS is on; its way is led by what INSTRUMENT's targets do.
# To run it: bin/NAME NEW_CORPUS SEEDS
function(regalon_add_fuzzer name)
  if(NOT REGALON_FUZZERS)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 ARG "QT" "" "SOURCES;LINK;PRIVATE_LINK;INSTRUMENT")
  if(ARG_QT)
    set(qt QT)
  endif()
  regalon_add_executable(${name} ${qt} SOURCES ${ARG_SOURCES} LINK ${ARG_LINK})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
  target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  foreach(target ${ARG_INSTRUMENT})
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endforeach()
endfunction()

# regalon_add_test(name [QT] SOURCES files... [LINK libraries...] [ENVIRONMENT VAR=value...] [LABELS labels...]
#                  [TIMEOUT seconds])
# One GoogleTest program; each of its tests is a test of ctest, in a process of its own. QT programs bring their own
# main() through tests/support and run on Qt's offscreen platform unless ENVIRONMENT says otherwise.
function(regalon_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "QT" "TIMEOUT" "SOURCES;LINK;PRIVATE_LINK;ENVIRONMENT;LABELS")
  add_executable(${name})
  if(ARG_QT)
    regalon_prepare_target(${name} QT SOURCES ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} regalon_test_support Qt6::Test GTest::gtest)
    list(APPEND ARG_ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
  else()
    regalon_prepare_target(${name} SOURCES ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} GTest::gtest GTest::gtest_main)
  endif()
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
  target_compile_definitions(${name} PRIVATE
    REGALON_SOURCE_DIR="${CMAKE_SOURCE_DIR}" REGALON_BINARY_DIR="${CMAKE_BINARY_DIR}")
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
    TEST_PREFIX "${name}." 
    PROPERTIES TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT "${ARG_ENVIRONMENT}" LABELS "${ARG_LABELS}")
endfunction()
