// The program that libFuzzer drives:
//
//   tern_fuzz --target=json CORPUS_FOLDER       with libFuzzer's own options, such as -runs=1000
//   tern_fuzz --target=json FILE                does again what a file leads to
//   tern_fuzz --target=json --seeds=FOLDER      writes the inputs to begin with
//   tern_fuzz --list                            the names of the targets
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/JsonMutator.hpp"
#include "fuzz/Target.hpp"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t mostSize);

namespace tern::fuzz {
namespace {

const Target* chosen = nullptr;

std::optional<std::string> valueOf(std::string_view name, int count, char** words) {
  for (int i = 1; i < count; ++i) {
    const std::string_view word = words[i];
    if (word.starts_with(name)) return std::string(word.substr(name.size()));
  }
  return std::nullopt;
}

[[noreturn]] void list() {
  for (const Target* target : targets()) std::puts(std::string(target->name).c_str());
  std::exit(0);
}

[[noreturn]] void writeSeeds(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  int number = 0;
  for (const std::string& seed : chosen->seeds()) {
    std::ofstream(folder / ("seed-" + std::to_string(++number)), std::ios::binary) << seed;
  }
  std::exit(0);
}

std::string mutateByLibFuzzer(std::string bytes) {
  const std::size_t size = bytes.size();
  bytes.resize(size + 16);
  auto* const data = reinterpret_cast<std::uint8_t*>(bytes.data());
  bytes.resize(LLVMFuzzerMutate(data, size, bytes.size()));
  return bytes;
}

std::size_t put(const std::string& bytes, std::uint8_t* data, std::size_t mostSize) {
  const std::size_t size = std::min(bytes.size(), mostSize);
  if (size > 0) std::memcpy(data, bytes.data(), size);
  return size;
}

}  // namespace
}  // namespace tern::fuzz

extern "C" int LLVMFuzzerInitialize(int* count, char*** words) {
  using namespace tern::fuzz;
  if (valueOf("--list", *count, *words)) list();
  const auto name = valueOf("--target=", *count, *words);
  chosen = name ? findTarget(*name) : nullptr;
  if (chosen == nullptr) {
    std::fputs("--target=NAME is missing, or names none; see --list\n", stderr);
    std::exit(2);
  }
  if (const auto folder = valueOf("--seeds=", *count, *words)) writeSeeds(*folder);
  isolate();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tern::fuzz::chosen->run(std::string(data, data + size));
  return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t mostSize, unsigned seed) {
  using namespace tern::fuzz;
  if (!chosen->takesJson || seed % 16 == 0) return LLVMFuzzerMutate(data, size, mostSize);
  JsonMutator mutator(seed, mutateByLibFuzzer);
  return put(mutator.mutate(std::string(data, data + size), {}, mostSize), data, mostSize);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* one, std::size_t oneSize,
                                                 const std::uint8_t* other, std::size_t otherSize,
                                                 std::uint8_t* out, std::size_t mostSize,
                                                 unsigned seed) {
  using namespace tern::fuzz;
  const std::string text(one, one + oneSize);
  if (!chosen->takesJson) {
    const std::size_t at = oneSize > 0 ? seed % oneSize : 0;
    return put(text.substr(0, at) + std::string(other, other + otherSize), out, mostSize);
  }
  JsonMutator mutator(seed, mutateByLibFuzzer);
  return put(mutator.mutate(text, std::string(other, other + otherSize), mostSize), out, mostSize);
}
