// Reads a file descriptor line by line.
//
// A line ends at "\n" or "\r\n"; what stands behind the last end is a line too unless it is empty.
// A line longer than the limit is not held: it comes as `tooLong` without its text.
//
// Ownership: the descriptor stays the caller's. A line's text lives until the next call of `next`.
// Threads: one.
// Fails: a read that fails ends the lines; `error` says why.
//
//   LineReader lines(STDIN_FILENO);
//   while (const auto line = lines.next()) answer(line->text);
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace tern::command {

class LineReader {
 public:
  struct Line {
    std::string_view text;
    bool tooLong = false;
  };

  static constexpr std::size_t defaultLongestBytes = std::size_t{16} << 20U;

  explicit LineReader(int descriptor, std::size_t longestBytes = defaultLongestBytes)
      : descriptor_(descriptor), longestBytes_(longestBytes) {}

  // Waits for the next line; none at the end.
  std::optional<Line> next();
  // Whether the next line has been read already, so that `next` will not wait.
  bool hasLine() { return findEnd() != noEnd; }

  std::size_t longestBytes() const { return longestBytes_; }
  // The errno of the read that failed; 0 as long as none has.
  int error() const { return error_; }

 private:
  static constexpr std::size_t noEnd = static_cast<std::size_t>(-1);

  // Position of the next line's "\n".
  std::size_t findEnd();
  // Whether anything came.
  bool readMore();
  void makeRoom();
  // Forgets the line that has outgrown the limit, but not that there is one.
  void dropWhatIsHeld();
  Line take(std::size_t end);

  int descriptor_;
  std::size_t longestBytes_;
  int error_ = 0;
  // Bytes begin_ to end_ of the buffer are read and not handed out; up to scanned_ they hold no
  // "\n".
  std::vector<char> buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::size_t scanned_ = 0;
  bool tooLong_ = false;
};

}  // namespace tern::command
