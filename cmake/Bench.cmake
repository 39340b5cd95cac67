# Measurements: ours beside libraries known to be fast at the same work.

file(GLOB_RECURSE tern_bench_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/bench/*.cpp)
if(NOT tern_bench_sources)
  return()
endif()

find_package(Boost)
find_package(lemon)
find_package(simdjson)
find_package(benchmark)
find_package(nanoflann)
if(NOT Boost_FOUND OR NOT lemon_FOUND OR NOT simdjson_FOUND OR NOT benchmark_FOUND
    OR NOT nanoflann_FOUND)
  message(STATUS "No benchmarks: Boost, LEMON, simdjson, Google Benchmark or nanoflann is missing")
  return()
endif()

# Its clients are those of a test.
add_executable(tern_bench ${tern_bench_sources} ${PROJECT_SOURCE_DIR}/tests/support/HttpCrowd.cpp)
tern_own_target(tern_bench)
# LEMON 1.3 uses parts of allocators that C++20 took away.
set_source_files_properties(${PROJECT_SOURCE_DIR}/bench/LemonPeer.cpp PROPERTIES
  COMPILE_OPTIONS -std=c++17)
target_include_directories(tern_bench SYSTEM PRIVATE ${LEMON_INCLUDE_DIRS})
target_compile_definitions(tern_bench PRIVATE TERN_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(tern_bench PRIVATE
  TernCoreKit::TernCoreKit Boost::boost simdjson::simdjson benchmark::benchmark nanoflann::nanoflann)
if(TARGET tern_tool)
  target_link_libraries(tern_bench PRIVATE tern_tool)
endif()
