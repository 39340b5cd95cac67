// OpenStreetMap files in protocol buffers, block by block, good ones and bad ones.
//
// Ownership: plain values. Threads: free functions.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tern::test {

struct PbfBlob {
  std::string type = "OSMData";
  // Before it is packed.
  std::string data;
  bool isPacked = true;
  // What it says to unpack to, where that is not what it does.
  std::int32_t statedBytes = -1;
};

// With its length and its header.
std::string pbfBlob(const PbfBlob& blob);
// The block that every file begins with.
std::string pbfHeader();

// A block of texts and of dense nodes a thousandth of a degree apart, with one way through all of
// them; the way's tags are places in the texts, of keys and values in turn.
std::string pbfBlock(const std::vector<std::string>& texts, std::size_t nodes,
                     const std::vector<std::uint32_t>& tags);

}  // namespace tern::test
