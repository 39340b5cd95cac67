// A file of a page that is part of the program, and what is answered to a request for it.
//
// Such a file is kept compressed, and sent so to who takes gzip. It comes with a strong ETag and is
// asked for anew each time, unless its name says what it holds by a hash ("app-5f3c21d0.js"): then
// it stays what it is for good.
//
// Ownership: views of constants. Threads: any. Fails: by the status of an answer.
#pragma once

#include <cstddef>
#include <string_view>

#include "tools/service/HttpServer.hpp"

namespace tern::service {

struct PageFile {
  // Its path in the page, such as "icons/tern.svg".
  std::string_view name;
  // Its media type, as a header gives it.
  std::string_view type;
  // Of its bytes, in hexadecimal digits.
  std::string_view hash;
  std::string_view gzip;
  // How many there are when they are not compressed.
  std::size_t bytes = 0;
};

// Status 304 without a body where the request says that it holds the file.
ServedAnswer answerOf(const PageFile& file, const ReceivedRequest& request);

}  // namespace tern::service
