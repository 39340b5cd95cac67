// The body of an answer that comes piece by piece.
//
// Threads: one at a time. Fails: by std::bad_alloc, which breaks the answer off.
#pragma once

#include <cstddef>

namespace tern::service {

class BodyStream {
 public:
  struct Piece {
    std::size_t bytes = 0;
    // Of none that follow: the body has come to its end.
    bool isEnd = false;
  };

  virtual ~BodyStream() = default;

  // Copies at most so many bytes. None, and not the end, says that there are none yet: the
  // request's `wake` is called when it may be read again.
  virtual Piece read(char* to, std::size_t most) = 0;
};

}  // namespace tern::service
