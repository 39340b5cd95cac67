#include "tools/service/PageFile.hpp"

#include <zlib.h>

#include <algorithm>
#include <new>
#include <string>

#include "tools/service/RequestTarget.hpp"

namespace tern::service {

namespace {

// zlib's way to ask for gzip and nothing else.
constexpr int gzipOnly = 16 + MAX_WBITS;

std::string inflated(const PageFile& file) {
  std::string text(file.bytes, '\0');
  z_stream stream{};
  // zlib reads them only, but its type does not say so.
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(file.gzip.data()));
  stream.avail_in = static_cast<uInt>(file.gzip.size());
  stream.next_out = reinterpret_cast<Bytef*>(text.data());
  stream.avail_out = static_cast<uInt>(text.size());
  if (::inflateInit2(&stream, gzipOnly) != Z_OK) throw std::bad_alloc();
  const int result = ::inflate(&stream, Z_FINISH);
  ::inflateEnd(&stream);
  // What was compressed when the program was built fails for nothing else.
  if (result != Z_STREAM_END) throw std::bad_alloc();
  return text;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
  text.remove_prefix(begin);
  return text.substr(0, text.find_last_not_of(" \t") + 1);
}

// Whether a coding's parameter refuses it: "q=0", "q=0.000".
bool isRefusal(std::string_view parameter) {
  return parameter.starts_with("q=0") && parameter.find_first_of("123456789") == parameter.npos;
}

// Whether an Accept-Encoding does. Of a coding that is named twice the first counts.
bool takesGzip(std::string_view accepted) {
  for (const std::string& coding : split(accepted, ',')) {
    const std::size_t end = std::min(coding.find(';'), coding.size());
    const std::string_view name = trimmed(std::string_view(coding).substr(0, end));
    if (name != "gzip" && name != "*") continue;
    return !isRefusal(trimmed(std::string_view(coding).substr(std::min(end + 1, coding.size()))));
  }
  return false;
}

// Whether an If-None-Match names it. A weak tag names what a strong one does.
bool isNamed(std::string_view tags, std::string_view tag) {
  const auto parts = split(tags, ',');
  return std::ranges::any_of(parts, [&](std::string_view part) {
    part = trimmed(part);
    if (part.starts_with("W/")) part.remove_prefix(2);
    return part == "*" || part == tag;
  });
}

// Whether the name ends in a hash before its ending, as programs that bundle pages write it: eight
// or more digits of base 16 or 32.
bool hasHash(std::string_view name) {
  const std::string_view stem = name.substr(0, name.rfind('.'));
  const std::size_t mark = stem.find_last_of("-.");
  if (mark == stem.npos || stem.size() - mark <= 8) return false;
  const std::string_view hash = stem.substr(mark + 1);
  return hash.find_first_not_of("0123456789abcdef") == hash.npos ||
         hash.find_first_not_of("234567ABCDEFGHIJKLMNOPQRSTUVWXYZ") == hash.npos;
}

}  // namespace

ServedAnswer answerOf(const PageFile& file, const ReceivedRequest& request) {
  const bool isGzip = takesGzip(request.header("Accept-Encoding").value_or(""));
  // The two are different bytes, so they have different tags.
  const std::string tag = '"' + std::string(file.hash) + (isGzip ? "-gzip\"" : "\"");
  ServedAnswer answer;
  answer.headers = {
      {"ETag", tag},
      {"Vary", "Accept-Encoding"},
      {"Cache-Control", hasHash(file.name) ? "max-age=31536000, immutable" : "no-cache"}};
  if (isNamed(request.header("If-None-Match").value_or(""), tag)) {
    answer.status = 304;
    return answer;
  }
  answer.type = file.type;
  if (isGzip) answer.headers.push_back({"Content-Encoding", "gzip"});
  answer.body = isGzip ? std::string(file.gzip) : inflated(file);
  return answer;
}

}  // namespace tern::service
