#include "TernCoreKit/platform/detail/curl/Gunzip.hpp"

#include <array>

namespace tern::inline v5::detail {

namespace {

// zlib's way to ask for gzip and nothing else.
constexpr int gzipOnly = 16 + MAX_WBITS;
constexpr std::size_t partBytes = std::size_t{32} << 10U;

const char* faultOf(int result) {
  // Without input or room there is nothing to do for now.
  if (result == Z_OK || result == Z_STREAM_END || result == Z_BUF_ERROR) return nullptr;
  return result == Z_MEM_ERROR ? "out of memory" : "The answer is no valid gzip";
}

}  // namespace

Gunzip::Gunzip() : isReady_(::inflateInit2(&stream_, gzipOnly) == Z_OK) {}

Gunzip::~Gunzip() {
  if (isReady_) ::inflateEnd(&stream_);
}

const char* Gunzip::add(std::string_view bytes, std::string& text, std::size_t mostBytes) {
  if (!isReady_) return "out of memory";
  // zlib reads them only, but its type does not say so.
  stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream_.avail_in = static_cast<uInt>(bytes.size());
  do {
    if (const char* fault = addPart(text, mostBytes)) return fault;
    // A part that is full may have more behind it.
  } while (stream_.avail_in > 0 || (stream_.avail_out == 0 && !hasEnded_));
  return nullptr;
}

const char* Gunzip::addPart(std::string& text, std::size_t mostBytes) {
  // Several streams one after the other are one.
  if (hasEnded_) ::inflateReset(&stream_);
  std::array<char, partBytes> part;
  stream_.next_out = reinterpret_cast<Bytef*>(part.data());
  stream_.avail_out = static_cast<uInt>(part.size());
  const int result = ::inflate(&stream_, Z_NO_FLUSH);
  const std::size_t count = part.size() - stream_.avail_out;
  if (count > mostBytes - text.size()) return "The answer is too long";
  text.append(part.data(), count);
  hasEnded_ = result == Z_STREAM_END;
  return faultOf(result);
}

}  // namespace tern::detail
