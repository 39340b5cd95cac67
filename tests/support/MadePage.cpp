#include "tests/support/MadePage.hpp"

#include <zlib.h>

#include <functional>
#include <stdexcept>
#include <utility>

namespace tern::test {

std::string gzipOf(std::string_view text) {
  constexpr int gzipHeader = 16 + MAX_WBITS;
  z_stream stream{};
  ::deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, gzipHeader, 8, Z_DEFAULT_STRATEGY);
  std::string compressed(::deflateBound(&stream, text.size()), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(compressed.data());
  stream.avail_out = static_cast<uInt>(compressed.size());
  const int result = ::deflate(&stream, Z_FINISH);
  compressed.resize(stream.total_out);
  ::deflateEnd(&stream);
  if (result != Z_STREAM_END) throw std::runtime_error("zlib does not compress");
  return compressed;
}

void MadePage::add(std::string name, std::string type, std::string_view text) {
  const std::string hash = std::to_string(std::hash<std::string_view>()(text));
  files_.push_back(
      {keep(std::move(name)), keep(std::move(type)), keep(hash), keep(gzipOf(text)), text.size()});
}

}  // namespace tern::test
