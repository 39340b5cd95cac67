#include "tools/service/RequestTarget.hpp"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace tern::service {

namespace {

// Resolves "%20"; none for half an escape.
std::optional<std::string> unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      plain += text[i];
      continue;
    }
    const std::string_view digits = text.substr(i + 1, 2);
    unsigned char byte = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
    if (error != std::errc() || end != text.data() + i + 3) return std::nullopt;
    plain += static_cast<char>(byte);
    i += 2;
  }
  return plain;
}

}  // namespace

std::string_view RequestTarget::parameter(std::string_view name) const {
  for (const auto& [key, value] : parameters) {
    if (key == name) return value;
  }
  return {};
}

std::optional<RequestTarget> parseTarget(std::string_view target) {
  const std::size_t end = std::min(target.find('?'), target.size());
  RequestTarget parsed{std::string(target.substr(0, end)), {}, {}};
  if (!parsed.path.starts_with('/')) return std::nullopt;
  for (const std::string& part : split(std::string_view(parsed.path).substr(1), '/')) {
    auto name = unescaped(part);
    if (!name || !isFileName(*name)) return std::nullopt;
    parsed.names.push_back(std::move(*name));
  }
  if (end == target.size()) return parsed;
  for (const std::string& part : split(target.substr(end + 1), '&')) {
    const std::size_t sign = std::min(part.find('='), part.size());
    auto value = unescaped(std::string_view(part).substr(std::min(sign + 1, part.size())));
    if (!value) return std::nullopt;
    parsed.parameters.emplace_back(part.substr(0, sign), std::move(*value));
  }
  return parsed;
}

bool isFileName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    parts.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return parts;
}

}  // namespace tern::service
