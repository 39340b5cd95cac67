// What a fuzzer is: something that is done with an input, promises that hold whatever the input is,
// and small inputs to begin with. Each target is a file of its own and a line in Target.cpp.
//
// Ownership: targets are constants. Threads: one. Fails: a broken promise ends the process.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tern::fuzz {

struct Target {
  std::string_view name;
  // The inputs are JSON documents, and what differs in their trees is worth more than what differs
  // in their bytes.
  bool takesJson = false;
  void (*run)(const std::string& input) = nullptr;
  std::vector<std::string> (*seeds)() = nullptr;
};

std::span<const Target* const> targets();
// Null without one of that name.
const Target* findTarget(std::string_view name);

// Puts aside what an input may reach: the log says nothing, background work is done at once, no
// request leaves the process.
void isolate();

// Ends the process, and says which promise was broken, unless it holds.
void require(bool holds, const char* promise);

}  // namespace tern::fuzz
