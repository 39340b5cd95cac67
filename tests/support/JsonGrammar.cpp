#include "tests/support/JsonGrammar.hpp"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <regex>
#include <string>

namespace tern::test {
namespace {

class Grammar {
 public:
  explicit Grammar(std::string_view text) : rest_(text) {}

  bool document() {
    take("\xEF\xBB\xBF");
    space();
    if (!value(1)) return false;
    space();
    return rest_.empty();
  }

 private:
  bool take(std::string_view word) {
    if (!rest_.starts_with(word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }

  void space() {
    while (!rest_.empty() && std::string_view(" \n\r\t").contains_any(rest_.front())) {
      rest_.remove_prefix(1);
    }
  }

  std::string_view rest_;
};

}  // namespace
}  // namespace tern::test
