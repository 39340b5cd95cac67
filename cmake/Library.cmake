# The library TernCoreKit and what every target of this repository is compiled with.

option(TERN_WITH_CURL "HTTP of our own; without it the application has to provide one" ON)
option(TERN_WITH_SYSTEM
  "Threads and files of the system; without it work is done where it is asked for, and files are the application's" ON)
set(TERN_DEFAULT_SERVICE_HOST "https://maps.example.invalid" CACHE STRING
  "Scheme and host of the mapping service that destinations are asked of")

if(TERN_WITH_SYSTEM)
  find_package(Threads REQUIRED)
endif()
if(TERN_WITH_CURL)
  find_package(CURL 7.87)
  if(NOT CURL_FOUND)
    message(FATAL_ERROR "libcurl 7.87 or newer is missing. Install it (Debian: "
      "libcurl4-openssl-dev), or set TERN_WITH_CURL to OFF and give the library an HTTP transport.")
  endif()
  find_package(ZLIB REQUIRED)
endif()

# Reads doubles, which std::from_chars does not do everywhere; it is all in headers.
find_path(TERN_FAST_FLOAT_INCLUDE fast_float/fast_float.h)
if(NOT TERN_FAST_FLOAT_INCLUDE)
  message(FATAL_ERROR "fast_float is missing. Install it (Debian: libfast-float-dev), or set "
    "TERN_FAST_FLOAT_INCLUDE to the folder that holds fast_float/fast_float.h.")
endif()

# Where several sources are compiled as one, a local name may be that of a function in another file.
set(tern_unity_shadow $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wshadow=local>)

# Compiles a target of ours as we hold ourselves to: the same floating-point results on every
# machine (no contraction of a*b+c) and, in our own build only, no warnings.
function(tern_own_target target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE -ffp-contract=off)
  if(TERN_BUILD_DEV)
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Werror
      $<IF:$<BOOL:${CMAKE_UNITY_BUILD}>,${tern_unity_shadow},-Wshadow>
      $<$<COMPILE_LANG_AND_ID:CXX,Clang,AppleClang>:-Wthread-safety>
      # GCC 12 is wrong about "text" + string (its bug 105651).
      $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
  endif()
endfunction()

file(GLOB_RECURSE tern_library_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/TernCoreKit/*.cpp)
if(TERN_WITH_CURL)
  list(FILTER tern_library_sources EXCLUDE REGEX "/NoHttpTransport\\.cpp$")
else()
  list(FILTER tern_library_sources EXCLUDE REGEX "/platform/detail/curl/")
endif()
if(TERN_WITH_SYSTEM)
  list(FILTER tern_library_sources EXCLUDE REGEX "/NoFiles\\.cpp$")
else()
  list(FILTER tern_library_sources EXCLUDE REGEX "/(PosixFiles|DefaultFiles|PlainFile)\\.cpp$")
endif()
include(${PROJECT_SOURCE_DIR}/cmake/Languages.cmake)
tern_embed_languages(${PROJECT_BINARY_DIR}/Languages.cpp)
list(APPEND tern_library_sources ${PROJECT_BINARY_DIR}/Languages.cpp)
file(GLOB_RECURSE tern_headers CONFIGURE_DEPENDS
  RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/TernCoreKit/*.hpp)
set(tern_public_headers ${tern_headers})
list(FILTER tern_public_headers EXCLUDE REGEX "/detail/")

add_library(TernCoreKit ${tern_library_sources})
add_library(TernCoreKit::TernCoreKit ALIAS TernCoreKit)
tern_own_target(TernCoreKit)
target_compile_features(TernCoreKit PUBLIC cxx_std_20)
target_include_directories(TernCoreKit PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>)
target_include_directories(TernCoreKit SYSTEM PRIVATE ${TERN_FAST_FLOAT_INCLUDE})
configure_file(TernCoreKit/Version.hpp.in include/TernCoreKit/Version.hpp @ONLY)
if(TERN_WITH_SYSTEM)
  target_link_libraries(TernCoreKit PUBLIC Threads::Threads)
endif()
if(TERN_WITH_CURL)
  target_link_libraries(TernCoreKit PRIVATE CURL::libcurl ZLIB::ZLIB)
endif()
set_source_files_properties(${PROJECT_SOURCE_DIR}/TernCoreKit/service/ServiceHost.cpp PROPERTIES
  COMPILE_DEFINITIONS TERN_DEFAULT_SERVICE_HOST="${TERN_DEFAULT_SERVICE_HOST}")

# What TERN_API marks is exported from the shared library. A program or plugin that links the static
# one exports nothing of it: neither what is ours nor what its objects made of standard templates.
if(BUILD_SHARED_LIBS)
  target_compile_definitions(TernCoreKit PUBLIC TERN_SHARED)
  # What scripts/checks/c-abi compares.
  set_source_files_properties(${PROJECT_SOURCE_DIR}/TernCoreKit/c/tern.cpp PROPERTIES
    SKIP_UNITY_BUILD_INCLUSION ON COMPILE_OPTIONS -g)
elseif(CMAKE_SYSTEM_NAME MATCHES "Linux|Android|BSD")
  set(tern_keep_symbols -Wl,--exclude-libs,libTernCoreKit.a)
  target_link_options(TernCoreKit INTERFACE ${tern_keep_symbols})
endif()
set_target_properties(TernCoreKit PROPERTIES
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON
  POSITION_INDEPENDENT_CODE ON
  DEFINE_SYMBOL ""  # TERN_SHARED is what the headers ask for
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR})
