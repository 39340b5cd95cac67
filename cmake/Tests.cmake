# Test programs, and the checks that are compilations.

file(GLOB_RECURSE tern_test_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/*.cpp)
list(FILTER tern_test_sources EXCLUDE REGEX "/tests/(install|portability)/")
set(tern_test_support ${tern_test_sources})
list(FILTER tern_test_support EXCLUDE REGEX "_test\\.cpp$")
list(APPEND tern_test_support ${PROJECT_SOURCE_DIR}/tests/c/WholeInterface.c)
list(FILTER tern_test_sources INCLUDE REGEX "_test\\.cpp$")
if(NOT TERN_WITH_IMPORT)
  list(FILTER tern_test_sources EXCLUDE REGEX "/tests/tools/(import/|tern/ImportCommand)")
  list(FILTER tern_test_support EXCLUDE REGEX "/tests/tools/import/")
endif()

set(TERN_ONLY_TESTS "" CACHE STRING "Regular expression of the test sources to build; empty for all")
if(TERN_ONLY_TESTS)
  list(FILTER tern_test_sources INCLUDE REGEX "${TERN_ONLY_TESTS}")
endif()

# Compiles sources without linking them, when there are any.
function(tern_add_check target)
  if(ARGN)
    add_library(${target} OBJECT EXCLUDE_FROM_ALL ${ARGN})
    tern_own_target(${target})
    target_link_libraries(${target} PRIVATE TernCoreKit::TernCoreKit)
  endif()
endfunction()

# Each public header stands alone: it is the first include of the source beside it (as
# scripts/checks/file-includes sees to) or, where there is none, the only include of one made here.
set(tern_header_checks)
foreach(header IN LISTS tern_public_headers)
  string(REGEX REPLACE "hpp$" "cpp" source ${PROJECT_SOURCE_DIR}/${header})
  if(EXISTS ${source})
    continue()
  endif()
  set(source ${PROJECT_BINARY_DIR}/header_checks/${header}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "#include \"@header@\"\n" @ONLY)
  list(APPEND tern_header_checks ${source})
endforeach()
tern_add_check(tern_header_checks ${tern_header_checks})
if(TARGET tern_header_checks)
  set_target_properties(tern_header_checks PROPERTIES UNITY_BUILD OFF)
endif()

# The heart of the library neither throws nor catches: it compiles with exceptions off.
set(tern_no_exceptions ${tern_library_sources})
list(FILTER tern_no_exceptions INCLUDE
  REGEX "/TernCoreKit/(model|wayfinding|spatial|optimisation|guidance|answers)/")
tern_add_check(tern_no_exceptions ${tern_no_exceptions})
if(TARGET tern_no_exceptions)
  target_compile_options(tern_no_exceptions PRIVATE -fno-exceptions -O0 -Wno-shadow)
  set_target_properties(tern_no_exceptions PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 50)
endif()

# What is packaged was compiled for the system's standard library. For another one GoogleTest comes
# from its sources; RapidCheck, which is packaged without its own, is done without.
set(TERN_GTEST_SOURCE "" CACHE PATH
  "Folder of GoogleTest's sources, for another standard library than the system's; leaves RapidCheck out")
if(TERN_GTEST_SOURCE)
  add_subdirectory(${TERN_GTEST_SOURCE} googletest EXCLUDE_FROM_ALL SYSTEM)
else()
  find_package(GTest)
  find_package(rapidcheck)
  if(NOT GTest_FOUND OR NOT rapidcheck_FOUND)
    message(STATUS "No tests: GoogleTest or RapidCheck is missing")
    return()
  endif()
  set(tern_rapidcheck rapidcheck rapidcheck_gtest rapidcheck_gmock)
endif()
if(NOT TERN_WITH_CURL)
  message(STATUS "No tests: they talk to servers, which takes TERN_WITH_CURL")
  return()
endif()
if(BUILD_SHARED_LIBS)
  message(STATUS "No tests: they reach inside the library, so it has to be static")
  return()
endif()

enable_testing()

# The fixture of the one has the name of the class that it tests, which the other tests of a unity
# build need; the others replace `new` and calls of the C library for whoever can see that they do.
set_source_files_properties(
  ${PROJECT_SOURCE_DIR}/tests/service/TernHub_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/support/FailingAllocation.cpp
  ${PROJECT_SOURCE_DIR}/tests/support/FailingSystemCall.cpp
  PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)

# Leaves out of a list of sources what includes RapidCheck itself or by headers of tests/support, one
# of which may include another.
function(tern_without_rapidcheck list)
  set(words rapidcheck)
  file(GLOB_RECURSE headers RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests/*.hpp)
  set(before)
  while(NOT words STREQUAL before)
    set(before ${words})
    foreach(header IN LISTS headers)
      file(STRINGS ${PROJECT_SOURCE_DIR}/${header} uses REGEX "^#include .(${words})" LIMIT_COUNT 1)
      if(uses)
        list(REMOVE_ITEM headers ${header})
        string(APPEND words "|${header}")
      endif()
    endforeach()
  endwhile()
  set(kept)
  foreach(source IN LISTS ${list})
    file(STRINGS ${source} uses REGEX "^#include .(${words})" LIMIT_COUNT 1)
    if(NOT uses)
      list(APPEND kept ${source})
    endif()
  endforeach()
  set(${list} ${kept} PARENT_SCOPE)
endfunction()
if(NOT tern_rapidcheck)
  tern_without_rapidcheck(tern_test_sources)
  tern_without_rapidcheck(tern_test_support)
endif()

# What the test programs share: main(), fakes and helpers, and the paths the tests may rely on.
add_library(tern_test_support OBJECT ${tern_test_support})
tern_own_target(tern_test_support)
set_target_properties(tern_test_support PROPERTIES C_STANDARD 11 C_EXTENSIONS OFF)
target_link_libraries(tern_test_support PUBLIC
  TernCoreKit::TernCoreKit GTest::gmock ${tern_rapidcheck})
target_compile_definitions(tern_test_support PUBLIC $<$<BOOL:${TERN_WITH_IMPORT}>:TERN_WITH_IMPORT>)
# The command with a page of two files, in a folder of its own, so that it can have its own name.
tern_add_command(tern_with_page ${PROJECT_SOURCE_DIR}/tests/page)
set_target_properties(tern_with_page PROPERTIES
  OUTPUT_NAME tern RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/with-page EXCLUDE_FROM_ALL ON)

set_source_files_properties(${PROJECT_SOURCE_DIR}/tests/support/Paths.cpp PROPERTIES
  COMPILE_DEFINITIONS "TERN_SOURCE_DIR=\"${PROJECT_SOURCE_DIR}\";TERN_BINARY_PATH=\"$<TARGET_FILE:tern>\";TERN_WITH_PAGE_PATH=\"$<TARGET_FILE:tern_with_page>\"")

# A program of the given test sources. ctest runs it in as many parts at once as `shards` says; a
# part that hangs fails.
function(tern_add_tests target shards)
  if(NOT ARGN)
    return()
  endif()
  add_executable(${target} ${ARGN})
  tern_own_target(${target})
  # What a test does itself is little, and compiling its matchers takes twice as long otherwise.
  target_compile_options(${target} PRIVATE $<$<CONFIG:Debug>:-O0>)
  target_link_libraries(${target} PRIVATE tern_test_support)
  foreach(part tern tern_with_page tern_tool)
    if(TARGET ${part})
      add_dependencies(${target} ${part})
    endif()
  endforeach()
  if(TARGET tern_tool)
    target_link_libraries(${target} PRIVATE tern_tool)
  endif()
  math(EXPR last "${shards} - 1")
  foreach(shard RANGE ${last})
    add_test(NAME ${target}.${shard} COMMAND ${target} --gtest_brief=1)
    set_tests_properties(${target}.${shard} PROPERTIES
      LABELS ${target}
      TIMEOUT 600
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${shards};GTEST_SHARD_INDEX=${shard}")
  endforeach()
endfunction()

tern_add_tests(tern_tests 4 ${tern_test_sources})

# Under the thread sanitizer only tests that use several threads tell anything new, and in a release
# build those that run the command as its users do; building just these keeps the test run short.
set(tern_concurrent_sources)
foreach(source IN LISTS tern_test_sources)
  file(STRINGS ${source} suites REGEX "^[A-Z_]+\\([A-Za-z0-9_]*Concurrent" LIMIT_COUNT 1)
  if(suites)
    list(APPEND tern_concurrent_sources ${source})
  endif()
endforeach()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${tern_test_sources})
tern_add_tests(tern_concurrent_tests 4 ${tern_concurrent_sources})

set(tern_command_sources ${tern_test_sources})
list(FILTER tern_command_sources INCLUDE REGEX "/tests/command/")
tern_add_tests(tern_command_tests 4 ${tern_command_sources})
