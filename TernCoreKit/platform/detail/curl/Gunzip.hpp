// Inflates a gzip body that comes in parts, and knows whether it came to its end.
//
// Ownership: owns what zlib keeps; stays where it is. Threads: one.
// Fails: by a line that says what is wrong; nothing more may be added then.
//
//   Gunzip gunzip;
//   if (const char* fault = gunzip.add(bytes, text, mostBytes)) ...
//   if (!gunzip.hasEnded()) ...  // half a body
#pragma once

#include <zlib.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace tern::inline v5::detail {

class Gunzip {
 public:
  Gunzip();
  ~Gunzip();
  Gunzip(const Gunzip&) = delete;
  Gunzip& operator=(const Gunzip&) = delete;

  // Puts what the bytes stand for behind the text, which may become so long and no longer; null, or
  // what is wrong. Of memory no more is taken than that.
  const char* add(std::string_view bytes, std::string& text, std::size_t mostBytes);
  // Whether the last byte was the last of a gzip stream.
  bool hasEnded() const { return hasEnded_; }

 private:
  const char* addPart(std::string& text, std::size_t mostBytes);

  z_stream stream_{};
  bool isReady_;
  bool hasEnded_ = false;
};

}  // namespace tern::detail
