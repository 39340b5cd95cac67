#include "tools/tern/Wrapping.hpp"

#include <utility>
#include <vector>

namespace tern::command {

namespace {

constexpr std::string_view goesOn = " \\";

// What stays on one line, each piece with the spaces behind it.
std::vector<std::string_view> piecesOf(std::string_view text, Breaks breaks) {
  std::vector<std::string_view> pieces;
  std::size_t start = 0;
  char quote = '\0';
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char letter = text[i];
    const bool isQuote = breaks == Breaks::inShell && (letter == '\'' || letter == '"');
    if (isQuote && (quote == '\0' || quote == letter)) quote = quote == '\0' ? letter : '\0';
    const bool mayBreak = letter == ' ' || (letter == ',' && breaks == Breaks::atCommas);
    const bool isLast = i + 1 == text.size() || text[i + 1] != ' ';
    if (!mayBreak || !isLast || quote != '\0') continue;
    pieces.push_back(text.substr(start, i + 1 - start));
    start = i + 1;
  }
  if (start < text.size()) pieces.push_back(text.substr(start));
  return pieces;
}

std::string_view trimmed(std::string_view piece) {
  return piece.substr(0, piece.find_last_not_of(' ') + 1);
}

class Lines {
 public:
  explicit Lines(const Wrap& wrap) : wrap_(wrap), line_(wrap.first, ' '), start_(wrap.first) {}

  void add(std::string_view piece, bool isLast) {
    const bool isShell = wrap_.breaks == Breaks::inShell;
    const std::size_t room = wrap_.width - (isShell && !isLast ? goesOn.size() : 0);
    if (line_.size() > start_ && line_.size() + trimmed(piece).size() > room) {
      end(isShell ? goesOn : "");
    }
    while (!isShell && line_.size() + trimmed(piece).size() > wrap_.width) {
      const std::size_t fitting = wrap_.width - line_.size();
      line_ += piece.substr(0, fitting);
      piece.remove_prefix(fitting);
      end("");
    }
    line_ += piece;
  }

  std::string finish() {
    if (line_.size() > start_) end("");
    return std::move(text_);
  }

 private:
  void end(std::string_view mark) {
    text_.append(trimmed(line_)).append(mark).append("\n");
    start_ = wrap_.further;
    line_.assign(start_, ' ');
  }

  const Wrap& wrap_;
  std::string text_;
  std::string line_;
  // How much of the line is indentation.
  std::size_t start_;
};

}  // namespace

std::string wrapped(std::string_view text, const Wrap& wrap) {
  Lines lines(wrap);
  const std::vector<std::string_view> pieces = piecesOf(text, wrap.breaks);
  for (const std::string_view& piece : pieces) lines.add(piece, &piece == &pieces.back());
  return lines.finish();
}

}  // namespace tern::command
