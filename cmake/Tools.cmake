# The command `tern` and the mapping service that it can run. Everything but its main() is a library
# of objects, which the tests link too.

find_path(TERN_MICROHTTPD_INCLUDE microhttpd.h REQUIRED)
find_library(TERN_MICROHTTPD microhttpd REQUIRED)
find_package(ZLIB REQUIRED)
find_package(Threads REQUIRED)

file(GLOB_RECURSE tern_tool_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tools/*.cpp)
set(tern_main ${PROJECT_SOURCE_DIR}/tools/tern/main.cpp)
list(REMOVE_ITEM tern_tool_sources ${tern_main})

option(TERN_WITH_IMPORT "The command that makes venues of open building data" ON)
set(tern_tool_libraries TernCoreKit::TernCoreKit ${TERN_MICROHTTPD} ZLIB::ZLIB Threads::Threads)
if(TERN_WITH_IMPORT)
  find_path(TERN_ZIP_INCLUDE zip.h REQUIRED)
  find_library(TERN_ZIP zip REQUIRED)
  find_path(TERN_CSV_INCLUDE csv.h REQUIRED)
  find_library(TERN_CSV csv REQUIRED)
  list(APPEND tern_tool_libraries ${TERN_ZIP} ${TERN_CSV})
else()
  list(FILTER tern_tool_sources EXCLUDE REGEX "/tools/(import/|tern/ImportCommand)")
endif()

if(tern_tool_sources)
  add_library(tern_tool OBJECT ${tern_tool_sources})
  tern_own_target(tern_tool)
  target_include_directories(tern_tool PUBLIC ${PROJECT_SOURCE_DIR}
                                       PRIVATE ${TERN_MICROHTTPD_INCLUDE})
  if(TERN_WITH_IMPORT)
    find_path(TERN_GEOS_INCLUDE geos_c.h REQUIRED)
    find_library(TERN_GEOS geos_c REQUIRED)
    target_include_directories(tern_tool PRIVATE ${TERN_GEOS_INCLUDE})
    find_path(TERN_OSMIUM_INCLUDE osmium/io/reader.hpp REQUIRED)
    find_path(TERN_PROTOZERO_INCLUDE protozero/pbf_reader.hpp REQUIRED)
    find_package(EXPAT REQUIRED)
    target_include_directories(tern_tool SYSTEM PRIVATE ${TERN_OSMIUM_INCLUDE}
                                                        ${TERN_PROTOZERO_INCLUDE})
    # Its headers are many, and only their own macros' order is known to work. They add up
    # differences beyond 64 bits before they refuse a coordinate for its size.
    set_source_files_properties(${PROJECT_SOURCE_DIR}/tools/import/osm/OsmFile.cpp PROPERTIES
      SKIP_UNITY_BUILD_INCLUSION ON COMPILE_OPTIONS -fwrapv)
    list(APPEND tern_tool_libraries ${TERN_GEOS} EXPAT::EXPAT)
  endif()
  target_link_libraries(tern_tool PUBLIC ${tern_tool_libraries})
  if(TERN_WITH_IMPORT)
    target_include_directories(tern_tool PRIVATE ${TERN_ZIP_INCLUDE} ${TERN_CSV_INCLUDE})
    target_compile_definitions(tern_tool PUBLIC TERN_WITH_IMPORT)
  endif()
  list(APPEND tern_tool_libraries tern_tool)
endif()

include(${PROJECT_SOURCE_DIR}/cmake/Page.cmake)

# The command with the page of that folder.
function(tern_add_command target page)
  add_executable(${target} ${tern_main})
  tern_own_target(${target})
  tern_embed_page(${target} "${page}")
  target_link_libraries(${target} PRIVATE ${tern_tool_libraries})
endfunction()

set(TERN_EXPLORER_DIR "" CACHE PATH "Folder of the built page of `tern explore`; empty for none")
if(EXISTS ${tern_main})
  tern_add_command(tern "${TERN_EXPLORER_DIR}")
endif()

# What the command says of itself for shells and for man, unless it cannot run on this machine.
if(TARGET tern AND (NOT CMAKE_CROSSCOMPILING OR CMAKE_CROSSCOMPILING_EMULATOR))
  set(tern_said ${PROJECT_BINARY_DIR}/said)
  file(MAKE_DIRECTORY ${tern_said})
  add_custom_command(TARGET tern POST_BUILD
    COMMAND tern completion bash > ${tern_said}/tern.bash
    COMMAND tern completion zsh > ${tern_said}/_tern
    COMMAND tern completion fish > ${tern_said}/tern.fish
    COMMAND tern man > ${tern_said}/tern.1
    VERBATIM)
endif()
