# The library TernCoreKit and what every target of this repository is compiled with.

find_package(Threads REQUIRED)

# Compiles a target of ours as we hold ourselves to: the same floating-point results on every
# machine (no contraction of a*b+c) and, in our own build only, no warnings.
function(tern_own_target target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE -ffp-contract=off)
  if(TERN_BUILD_DEV)
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Werror
      $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wthread-safety>
      # GCC 12 is wrong about "text" + string (its bug 105651).
      $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  endif()
endfunction()

file(GLOB_RECURSE tern_library_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/TernCoreKit/*.cpp)
file(GLOB_RECURSE tern_headers CONFIGURE_DEPENDS
  RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/TernCoreKit/*.hpp)
set(tern_public_headers ${tern_headers})
list(FILTER tern_public_headers EXCLUDE REGEX "/detail/")

add_library(TernCoreKit ${tern_library_sources})
add_library(TernCoreKit::TernCoreKit ALIAS TernCoreKit)
tern_own_target(TernCoreKit)
target_compile_features(TernCoreKit PUBLIC cxx_std_20)
target_include_directories(TernCoreKit PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
target_link_libraries(TernCoreKit PUBLIC Threads::Threads)
set_target_properties(TernCoreKit PROPERTIES
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON
  POSITION_INDEPENDENT_CODE ON
  # Static and shared builds compile the same objects, so a cached one serves both.
  DEFINE_SYMBOL ""
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR})
