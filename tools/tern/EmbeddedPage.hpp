// The page of `tern explore`, which is part of the program where it was built with one.
//
// Ownership: constants. Threads: any. Fails: never.
#pragma once

#include <span>

#include "tools/service/PageFile.hpp"

namespace tern::command {

// Its files; none in a program that was built without a page.
std::span<const service::PageFile> embeddedPage();

}  // namespace tern::command
