// A venue folder to serve, beside files that nobody may see.
//
// Ownership: owns the folder. Threads: any may read it.
#pragma once

#include <string>

#include "tests/support/TemporaryFolder.hpp"

namespace tern::fuzz {

class ServedFolder {
 public:
  // What the hidden files hold. Its quotes show that it comes out of a file: an error escapes those
  // of a target that it repeats.
  static constexpr const char* hidden = R"("id":"not-for-anybody")";
  static constexpr const char* customer = "/QRVS/api/customer/5";

  ServedFolder();

  std::string path() const { return folder_.at("served"); }

 private:
  const test::TemporaryFolder folder_;
};

}  // namespace tern::fuzz
