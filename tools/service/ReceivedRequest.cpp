#include "tools/service/ReceivedRequest.hpp"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace tern::service {

namespace {

constexpr std::string_view blanks = " \t";

std::string_view takeLine(std::string_view& text) {
  constexpr std::string_view lineEnd = "\r\n";
  const std::size_t end = std::min(text.find(lineEnd), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + lineEnd.size(), text.size()));
  return line;
}

std::string_view trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

bool isSameName(std::string_view name, std::string_view other) {
  const auto lower = [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  };
  return std::ranges::equal(name, other, {}, lower, lower);
}

std::optional<HttpHeader> parseHeader(std::string_view line) {
  const std::string_view name = line.substr(0, line.find(':'));
  if (name.empty() || name.size() == line.size()) return std::nullopt;
  if (name.find_first_of(blanks) != std::string_view::npos) return std::nullopt;
  return HttpHeader{std::string(name), std::string(trimmed(line.substr(name.size() + 1)))};
}

}  // namespace

std::optional<std::string> ReceivedRequest::header(std::string_view name) const {
  for (const HttpHeader& header : headers) {
    if (isSameName(header.name, name)) return header.value;
  }
  return std::nullopt;
}

std::optional<ReceivedRequest> parseHead(std::string_view head) {
  const std::string_view line = takeLine(head);
  const std::size_t first = std::min(line.find(' '), line.size());
  const std::size_t second = line.find(' ', first + 1);
  if (second == std::string_view::npos || !line.substr(second + 1).starts_with("HTTP/1.")) {
    return std::nullopt;
  }
  ReceivedRequest request{std::string(line.substr(0, first)),
                          std::string(line.substr(first + 1, second - first - 1)),
                          {},
                          {}};
  if (request.method.empty() || request.target.empty()) return std::nullopt;
  while (!head.empty()) {
    auto header = parseHeader(takeLine(head));
    if (!header) return std::nullopt;
    request.headers.push_back(*std::move(header));
  }
  return request;
}

BodySize bodySize(const ReceivedRequest& request, std::size_t most) {
  if (request.header("Transfer-Encoding")) return 411;
  const auto text = request.header("Content-Length");
  if (!text) return std::size_t{0};
  std::size_t size = 0;
  const char* const end = text->data() + text->size();
  const auto [stop, error] = std::from_chars(text->data(), end, size);
  if (error == std::errc::result_out_of_range) return 413;
  if (error != std::errc() || stop != end) return 400;
  if (size > most) return 413;
  return size;
}

}  // namespace tern::service
