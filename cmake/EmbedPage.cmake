# Writes the C++ source `output` that holds the files `names` (with | between each two) of `folder`:
# each compressed, with its type and a hash of its bytes.

cmake_minimum_required(VERSION 3.25)
if(names)
  find_program(gzip gzip REQUIRED)
endif()

set(type_css "text/css; charset=utf-8")
set(type_html "text/html; charset=utf-8")
set(type_ico image/x-icon)
set(type_js "text/javascript; charset=utf-8")
set(type_json application/json)
set(type_png image/png)
set(type_svg image/svg+xml)
set(type_txt "text/plain; charset=utf-8")
set(type_wasm application/wasm)
set(type_webmanifest application/manifest+json)
set(type_woff2 font/woff2)

# Without the time of the file, so that the same page makes the same program.
function(compress file result)
  execute_process(COMMAND ${gzip} -9 -n -c ${file} OUTPUT_FILE ${output}.gz COMMAND_ERROR_IS_FATAL ANY)
  file(READ ${output}.gz bytes HEX)
  file(REMOVE ${output}.gz)
  string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
  set(${result} "${bytes}" PARENT_SCOPE)
endfunction()

set(files)
string(REPLACE "|" ";" names "${names}")
foreach(name IN LISTS names)
  cmake_path(GET name EXTENSION LAST_ONLY ending)
  string(SUBSTRING "${ending}" 1 -1 ending)
  if(NOT DEFINED type_${ending})
    message(FATAL_ERROR "${folder}/${name}: cmake/EmbedPage.cmake knows no type for ${ending}")
  endif()
  file(SHA256 ${folder}/${name} hash)
  file(SIZE ${folder}/${name} bytes)
  compress(${folder}/${name} gzip_bytes)
  string(APPEND files "    {\"${name}\", \"${type_${ending}}\", \"${hash}\",\n"
    "     \"${gzip_bytes}\"sv, ${bytes}},\n")
endforeach()

list(LENGTH names count)
file(CONFIGURE OUTPUT ${output} @ONLY CONTENT [[
// Made by cmake/EmbedPage.cmake.
#include "tools/tern/EmbeddedPage.hpp"

#include <array>
#include <string_view>

namespace tern::command {

using namespace std::string_view_literals;

std::span<const service::PageFile> embeddedPage() {
  static constexpr std::array<service::PageFile, @count@> files{{
@files@  }};
  return files;
}

}  // namespace tern::command
]])
