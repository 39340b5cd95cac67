#include "TernCoreKit/platform/Files.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "tests/support/TemporaryFolder.hpp"

namespace tern {
namespace {

// Sets a variable of the environment as long as it lives.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    set(value);
  }
  ~ScopedVariable() { set(before_ ? before_->c_str() : nullptr); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  void set(const char* value) const {
    if (value != nullptr) {
      setenv(name_, value, 1);
    } else {
      unsetenv(name_);
    }
  }

  const char* const name_;
  std::optional<std::string> before_;
};

TEST(Files, defaultFolderLiesBelowTheUsersDataFolder) {
  const ScopedVariable data("XDG_DATA_HOME", "/data");
  EXPECT_EQ(fileSystem()->documentsFolder(), "/data/TernCoreKit");
}

TEST(Files, defaultFolderLiesBelowTheHomeWithoutADataFolder) {
  const ScopedVariable home("HOME", "/home/ada");
  for (const char* data : {static_cast<const char*>(nullptr), "", "relative"}) {
    const ScopedVariable none("XDG_DATA_HOME", data);
    EXPECT_EQ(fileSystem()->documentsFolder(), "/home/ada/.local/share/TernCoreKit");
  }
}

TEST(Files, everythingFailsWithoutAFolder) {
  const ScopedVariable data("XDG_DATA_HOME", nullptr);
  const ScopedVariable home("HOME", nullptr);
  const auto files = fileSystem();
  EXPECT_EQ(files->documentsFolder(), "");
  EXPECT_TRUE(files->createFolders("a"));
  EXPECT_TRUE(files->createFile("a", "text"));
  EXPECT_FALSE(files->isFolder(""));
}

TEST(Files, applicationPutsItsOwnFileSystemInPlace) {
  const auto own = makeFileSystem("/own/");
  setFileSystem(own);
  EXPECT_EQ(fileSystem(), own);
  EXPECT_EQ(fileSystem()->documentsFolder(), "/own");
  setFileSystem(nullptr);
  EXPECT_NE(fileSystem(), own);
}

}  // namespace
}  // namespace tern
