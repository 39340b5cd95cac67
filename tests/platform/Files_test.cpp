#include "TernCoreKit/platform/Files.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/support/ScopedVariable.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern {
namespace {

using test::ScopedVariable;

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
