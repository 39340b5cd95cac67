#include "TernCoreKit/platform/detail/HttpRequestCheck.hpp"

#include <algorithm>
#include <array>

namespace tern::inline v5::detail {
namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool isTokenCharacter(char c) {
  return (lower(c) >= 'a' && lower(c) <= 'z') || (c >= '0' && c <= '9') ||
         (c != '\0' && std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos);
}

bool isToken(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), isTokenCharacter);
}

bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

bool isValue(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return isControl(c) && c != '\t'; });
}

bool isOfTheTransport(std::string_view name) {
  constexpr std::array<std::string_view, 4> names = {"Connection", "Content-Length", "Host",
                                                     "Transfer-Encoding"};
  return std::any_of(names.begin(), names.end(),
                     [&](std::string_view other) { return isSameHeader(name, other); });
}

}  // namespace

bool isSameHeader(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lower(x) == lower(y); });
}

std::optional<std::string> httpRequestFault(const HttpRequest& request) {
  const auto isUrlFault = [](char c) { return isControl(c) || c == ' '; };
  if (std::any_of(request.url.begin(), request.url.end(), isUrlFault)) {
    return "The URL holds a space or a control character";
  }
  if (!isToken(request.method)) return "The method is none that HTTP allows";
  for (const HttpHeader& header : request.headers) {
    if (!isToken(header.name)) return "A header has a name that HTTP does not allow";
    if (!isValue(header.value)) return "A header has a value with a control character";
    if (isOfTheTransport(header.name)) {
      return "The header " + header.name + " cannot be set: it follows from the request";
    }
  }
  return std::nullopt;
}

}  // namespace tern::detail
