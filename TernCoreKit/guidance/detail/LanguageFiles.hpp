// The files of TernCoreKit/guidance/languages/, as they are, in the order of their names.
#pragma once

#include <span>
#include <string_view>

namespace tern::inline v5::detail {

std::span<const std::string_view> languageFiles();

}  // namespace tern::detail
