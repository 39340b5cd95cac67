// A page whose files a test makes, as they are when they are part of the program.
//
//   MadePage page;
//   page.add("index.html", "text/html", "<p>hello");
//   const service::PageSite site({.files = page.files(), ...});
//
// Ownership: owns what the files are views of. Threads: as values. Fails: never.
#pragma once

#include <list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/service/PageFile.hpp"

namespace tern::test {

// As the program gzip compresses it.
std::string gzipOf(std::string_view text);

class MadePage {
 public:
  void add(std::string name, std::string type, std::string_view text);
  std::span<const service::PageFile> files() const { return files_; }

 private:
  std::string_view keep(std::string text) { return texts_.emplace_back(std::move(text)); }

  std::list<std::string> texts_;
  std::vector<service::PageFile> files_;
};

}  // namespace tern::test
