#include "TernCoreKit/platform/detail/PosixFiles.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/CapturedLog.hpp"
#include "tests/support/DescriptorLimit.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/FailingSystemCall.hpp"
#include "tests/support/JoiningThread.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern::detail {
namespace {

namespace fs = std::filesystem;
using test::callsThatReachTheDisk;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::ptrdiff_t openDescriptors() {
  return std::distance(fs::directory_iterator("/proc/self/fd"), {});
}

class PosixFiles : public testing::Test {
 protected:
  const test::TemporaryFolder folder_;
  detail::PosixFiles files_{folder_.at("documents")};
};
using PosixFilesConcurrent = PosixFiles;

TEST_F(PosixFiles, readsBackWhatItWrote) {
  ASSERT_FALSE(files_.createFolders("/a/b"));
  for (const std::string& text : {std::string("text"), std::string(), std::string(100'000, 'x')}) {
    ASSERT_FALSE(files_.createFile("/a/b/c", text));
    EXPECT_EQ(files_.readFile("a//b/c"), text);
    EXPECT_EQ(folder_.read("documents/a/b/c"), text);
  }
  EXPECT_THAT(files_.list("/a/b"), ElementsAre("c"));
}

TEST_F(PosixFiles, readsNoFileThatIsLongerThanTheCallerTakes) {
  ASSERT_FALSE(files_.createFolders(""));
  ASSERT_FALSE(files_.createFile("file", "text"));
  EXPECT_EQ(files_.readFile("file", 4), "text");
  EXPECT_EQ(files_.readFile("file", 3), std::nullopt);
  EXPECT_EQ(files_.readFile("file", 0), std::nullopt);
}

TEST_F(PosixFiles, makesTheDocumentsFolderForItsUserAlone) {
  ASSERT_FALSE(files_.createFolders(""));
  struct stat status {};
  ASSERT_EQ(stat(folder_.at("documents").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(PosixFiles, tellsFilesFromFolders) {
  folder_.write("documents/a/file", "");
  EXPECT_TRUE(files_.isFolder(""));
  EXPECT_TRUE(files_.isFolder("a"));
  EXPECT_FALSE(files_.isFile("a"));
  EXPECT_TRUE(files_.isFile("a/file"));
  EXPECT_FALSE(files_.isFolder("a/file"));
  EXPECT_FALSE(files_.isFile("a/file/further"));
  EXPECT_FALSE(files_.isFile("b"));
}

TEST_F(PosixFiles, reportsWhatIsMissing) {
  EXPECT_EQ(files_.readFile("a"), std::nullopt);
  EXPECT_THAT(files_.list("a"), IsEmpty());
  const auto error = files_.remove("a");
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, ENOENT);
  EXPECT_EQ(error->text, "No such file or directory");
  EXPECT_EQ(files_.createFile("a/b", "text")->code, ENOENT);
}

TEST_F(PosixFiles, removesAFolderWithAllThatLiesInIt) {
  folder_.write("documents/a/b/c/file", "");
  folder_.write("documents/a/file", "");
  folder_.write("documents/b", "");
  EXPECT_FALSE(files_.remove("a"));
  EXPECT_THAT(files_.list(""), ElementsAre("b"));
}

// Far more levels than files may be open. Each is synced when it is made, which takes its time.
TEST_F(PosixFiles, removesFoldersHoweverDeepTheyLieInEachOther) {
  std::string path = "deep";
  for (int i = 0; i < 300; ++i) path += i % 7 == 0 ? "/another" : "/a";
  ASSERT_FALSE(files_.createFolders(path));
  ASSERT_FALSE(files_.createFile(path + "/file", "text"));
  {
    const test::DescriptorLimit limit(8);
    const auto error = files_.remove("deep");
    EXPECT_FALSE(error) << error->text;
  }
  EXPECT_THAT(files_.list(""), IsEmpty());
}

TEST_F(PosixFiles, saysThatItRanOutOfDescriptorsWhenItDid) {
  int shortages = 0;
  for (unsigned more = 0; more < 6; ++more) {
    folder_.write("documents/a/b/c/file", "");
    std::optional<FileError> error;
    {
      const test::DescriptorLimit limit(more);
      error = files_.remove("a");
    }
    if (!error) continue;
    ++shortages;
    EXPECT_EQ(error->code, EMFILE) << more << " descriptors: " << error->text;
  }
  EXPECT_GE(shortages, 4);
  EXPECT_THAT(files_.list(""), IsEmpty()) << "the last one had enough";
}

TEST_F(PosixFiles, whatCannotBeListedIsLoggedAndWhatIsNotThereIsNot) {
  folder_.write("documents/a/b/file", "");
  test::CapturedLog log;
  {
    const test::DescriptorLimit none(0);
    EXPECT_THAT(files_.list("a/b"), IsEmpty());
  }
  EXPECT_THAT(log.take(), ElementsAre(HasSubstr("the folder \"a/b\" cannot be listed: Too many")));
  EXPECT_THAT(files_.list("a/c"), IsEmpty());
  EXPECT_THAT(files_.list("a/b/file"), IsEmpty());
  EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(PosixFiles, aSaveIsWholeOrAnErrorWhateverAllocationFails) {
  ASSERT_FALSE(files_.createFolders("a"));
  ASSERT_FALSE(files_.createFile("a/file", "old"));
  const std::string fresh(1000, 'n');
  std::optional<FileError> error;
  std::optional<std::string> read;
  const int failed = test::forFailingAllocations(
      test::FailingAllocation::Reach::thread,
      [&] {
        error = files_.createFolders("a/b");
        if (!error) error = files_.createFile("a/file", fresh);
        read = files_.readFile("a/file");
      },
      [&] {
        const std::string held = files_.readFile("a/file").value();
        ASSERT_TRUE(error ? held == "old" : held == fresh);
        ASSERT_TRUE(!read || *read == held);
        if (error) {
          ASSERT_EQ(error->code, ENOMEM);
        }
        ASSERT_FALSE(files_.createFile("a/file", "old"));
        static_cast<void>(files_.remove("a/b"));
        ASSERT_EQ(std::distance(fs::directory_iterator(folder_.at("documents/a")), {}), 1)
            << "nothing is left under way";
      });
  EXPECT_GT(failed, 10);
}

TEST_F(PosixFiles, aRemovalIsDoneOrAnErrorWhateverAllocationFails) {
  std::optional<FileError> error;
  const auto renew = [&] { folder_.write("documents/a/b/c/file", ""); };
  renew();
  const int failed = test::forFailingAllocations(
      test::FailingAllocation::Reach::thread, [&] { error = files_.remove("a"); },
      [&] {
        ASSERT_EQ(fs::exists(folder_.at("documents/a")), error.has_value());
        renew();
      });
  EXPECT_GT(failed, 10);
}

TEST_F(PosixFiles, aSaveIsWholeOrAnErrorWhateverSystemCallFails) {
  ASSERT_FALSE(files_.createFolders("a"));
  ASSERT_FALSE(files_.createFile("a/file", "old"));
  const auto open = openDescriptors();
  const std::string fresh(1000, 'n');
  std::optional<FileError> error;
  std::optional<std::string> read;
  const int failed = test::forFailingSystemCalls(
      test::FailingAllocation::Reach::thread,
      [&] {
        error = files_.createFolders("a/b");
        if (!error) error = files_.createFile("a/file", fresh);
        read = files_.readFile("a/file");
      },
      [&] {
        const std::string held = files_.readFile("a/file").value();
        ASSERT_TRUE(error ? held == "old" : held == fresh);
        ASSERT_TRUE(!read || *read == held);
        ASSERT_FALSE(files_.createFile("a/file", "old"));
        static_cast<void>(files_.remove("a/b"));
        ASSERT_EQ(std::distance(fs::directory_iterator(folder_.at("documents/a")), {}), 1)
            << "nothing is left under way";
      });
  EXPECT_GT(failed, 30);
  EXPECT_EQ(openDescriptors(), open);
}

TEST_F(PosixFiles, aRemovalIsDoneOrAnErrorWhateverSystemCallFails) {
  std::optional<FileError> error;
  const auto renew = [&] {
    folder_.write("documents/a/b/c/file", "");
    folder_.write("documents/a/b/file", "");
  };
  renew();
  const auto open = openDescriptors();
  const int failed = test::forFailingSystemCalls(
      test::FailingAllocation::Reach::thread, [&] { error = files_.remove("a"); },
      [&] {
        ASSERT_EQ(fs::exists(folder_.at("documents/a")), error.has_value());
        renew();
      });
  EXPECT_GT(failed, 20);
  EXPECT_EQ(openDescriptors(), open);
}

TEST_F(PosixFiles, whatIsWrittenIsOnTheDiskBeforeItHasItsNameAndThenTheNameIs) {
  ASSERT_FALSE(files_.createFolders("a"));
  const std::string folder = folder_.at("documents/a");
  const auto calls =
      callsThatReachTheDisk([&] { ASSERT_FALSE(files_.createFile("a/file", "text")); });
  const std::string underWay = folder + "/.partial-";
  EXPECT_THAT(calls, ElementsAre(StartsWith("write " + underWay), StartsWith("fsync " + underWay),
                                 "renameat " + folder, "fsync " + folder));
}

TEST_F(PosixFiles, theNamesOfFoldersThatAreMadeAreOnTheDisk) {
  const std::string above = folder_.path().string();
  const auto make = [&] { ASSERT_FALSE(files_.createFolders("a/b")); };
  EXPECT_THAT(callsThatReachTheDisk(make),
              ElementsAre("fsync " + above, "mkdirat " + above + "/documents",
                          "fsync " + above + "/documents", "mkdirat " + above + "/documents/a",
                          "fsync " + above + "/documents/a"));
  EXPECT_THAT(callsThatReachTheDisk(make), Not(testing::Contains(StartsWith("fsync"))))
      << "those that are there are left alone";
}

TEST_F(PosixFiles, makesWhatIsMissingAboveTheDocumentsFolderAndSyncsItsName) {
  detail::PosixFiles files(folder_.at("x/y/documents"));
  EXPECT_THAT(callsThatReachTheDisk([&] { ASSERT_FALSE(files.createFolders("")); }),
              ElementsAre("fsync " + folder_.path().string(), "fsync " + folder_.at("x"),
                          "fsync " + folder_.at("x/y")));
}

// Containers give each process the same number, and a crash leaves a file under way behind.
TEST_F(PosixFiles, aFileThatACrashLeftUnderOurOwnProcessIdBlocksNoSave) {
  const std::string left = "documents/a/.partial-" + std::to_string(::getpid()) + "-0-0-1";
  folder_.write(left, "half");
  ASSERT_FALSE(files_.createFile("a/file", "text"));
  EXPECT_EQ(files_.readFile("a/file"), "text");
  EXPECT_FALSE(fs::exists(folder_.at(left)));
}

TEST_F(PosixFiles, aSaveTakesAnotherNameWhenItsOwnIsTaken) {
  ASSERT_FALSE(files_.createFolders("a"));
  test::letNamesBeTaken(2);
  ASSERT_FALSE(files_.createFile("a/file", "text"));
  EXPECT_EQ(files_.readFile("a/file"), "text");
}

TEST_F(PosixFiles, neverRemovesTheDocumentsFolderItself) {
  ASSERT_FALSE(files_.createFolders(""));
  for (const char* path : {"", "/", "//"}) EXPECT_TRUE(files_.remove(path));
  EXPECT_TRUE(files_.isFolder(""));
}

TEST_F(PosixFiles, leavesTheDocumentsFolderByNoName) {
  folder_.write("outside", "secret");
  ASSERT_FALSE(files_.createFolders("a"));
  const std::string longName(256, 'x');
  const std::string withNul("a\0b", 3);
  for (const std::string& path : {std::string("../outside"), std::string("a/../../outside"),
                                  std::string("./a/./x"), longName, withNul, "a/" + longName}) {
    EXPECT_EQ(files_.readFile(path), std::nullopt) << path;
    EXPECT_TRUE(files_.createFile(path, "text")) << path;
    EXPECT_TRUE(files_.createFolders(path)) << path;
    EXPECT_TRUE(files_.remove(path)) << path;
    EXPECT_FALSE(files_.isFile(path)) << path;
  }
  EXPECT_EQ(folder_.read("outside"), "secret");
  EXPECT_THAT(files_.list(""), ElementsAre("a"));
  EXPECT_THAT(files_.list(".."), IsEmpty());
}

TEST_F(PosixFiles, followsNoLink) {
  folder_.write("outside/file", "secret");
  ASSERT_FALSE(files_.createFolders("a"));
  fs::create_directory_symlink(folder_.at("outside"), folder_.at("documents/a/link"));
  fs::create_symlink(folder_.at("outside/file"), folder_.at("documents/a/fileLink"));

  EXPECT_EQ(files_.readFile("a/link/file"), std::nullopt);
  EXPECT_EQ(files_.readFile("a/fileLink"), std::nullopt);
  EXPECT_FALSE(files_.isFile("a/fileLink"));
  EXPECT_FALSE(files_.isFolder("a/link"));
  EXPECT_THAT(files_.list("a/link"), IsEmpty());
  EXPECT_TRUE(files_.createFile("a/link/new", "text"));
  EXPECT_TRUE(files_.createFolders("a/link/new"));
  EXPECT_TRUE(files_.remove("a/link/file"));
  // A link in the place of the file is replaced, and removed with its folder.
  EXPECT_FALSE(files_.createFile("a/fileLink", "text"));
  EXPECT_EQ(files_.readFile("a/fileLink"), "text");
  EXPECT_FALSE(files_.remove("a"));

  EXPECT_EQ(folder_.read("outside/file"), "secret");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path() / "outside"), {}), 1);
  EXPECT_THAT(files_.list(""), IsEmpty());
}

TEST_F(PosixFiles, acceptsALinkOnTheWayToTheDocumentsFolder) {
  fs::create_directory(folder_.at("real"));
  fs::create_directory_symlink(folder_.at("real"), folder_.at("link"));
  detail::PosixFiles files(folder_.at("link/documents"));
  ASSERT_FALSE(files.createFolders("a"));
  EXPECT_TRUE(fs::is_directory(folder_.at("real/documents/a")));
}

TEST_F(PosixFiles, doesNotWaitForAPipe) {
  ASSERT_FALSE(files_.createFolders(""));
  ASSERT_EQ(mkfifo(folder_.at("documents/pipe").c_str(), 0600), 0);
  EXPECT_EQ(files_.readFile("pipe"), std::nullopt);
  EXPECT_FALSE(files_.isFile("pipe"));
}

TEST_F(PosixFiles, whatACrashLeftOfAFileGoesWithTheNextOne) {
  folder_.write("documents/a/.partial-7-1", "torn");
  EXPECT_THAT(files_.list("a"), IsEmpty());
  ASSERT_FALSE(files_.createFile("a/file", "text"));
  EXPECT_FALSE(fs::exists(folder_.at("documents/a/.partial-7-1")));
  EXPECT_THAT(files_.list("a"), ElementsAre("file"));
}

TEST_F(PosixFiles, abandonedFilesGoFromAllFoldersBelow) {
  folder_.write("documents/a/b/.partial-7-1", "torn");
  folder_.write("documents/a/.partial-7-2", "torn");
  folder_.write("documents/.partial-7-3", "outside");
  folder_.write("documents/a/b/file", "text");
  files_.removeAbandoned("a");
  EXPECT_FALSE(fs::exists(folder_.at("documents/a/b/.partial-7-1")));
  EXPECT_FALSE(fs::exists(folder_.at("documents/a/.partial-7-2")));
  EXPECT_TRUE(fs::exists(folder_.at("documents/.partial-7-3")));
  EXPECT_EQ(files_.readFile("a/b/file"), "text");
}

TEST_F(PosixFiles, aFileThatSomebodyIsWritingStays) {
  folder_.write("documents/a/.partial-7-1", "half");
  const int writer = ::open(folder_.at("documents/a/.partial-7-1").c_str(), O_WRONLY | O_CLOEXEC);
  ASSERT_EQ(::flock(writer, LOCK_EX), 0);
  ASSERT_FALSE(files_.createFile("a/file", "text"));
  files_.removeAbandoned("");
  EXPECT_TRUE(fs::exists(folder_.at("documents/a/.partial-7-1")));
  ::close(writer);
  files_.removeAbandoned("");
  EXPECT_FALSE(fs::exists(folder_.at("documents/a/.partial-7-1")));
}

TEST_F(PosixFilesConcurrent, writersOfOneFileLoseNoSave) {
  ASSERT_FALSE(files_.createFolders("a"));
  std::vector<test::JoiningThread> writers;
  for (const char letter : {'x', 'y'}) {
    writers.emplace_back([this, letter] {
      for (int i = 0; i < 200; ++i) {
        EXPECT_FALSE(files_.createFile("a/file", std::string(1000, letter)));
      }
    });
  }
  writers.clear();
  EXPECT_EQ(files_.readFile("a/file").value().size(), 1000U);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.at("documents/a")), {}), 1)
      << "and nothing is left under way";
}

TEST_F(PosixFiles, keepsTheOldFileWhenTheNewOneCannotTakeItsPlace) {
  folder_.write("documents/a/folder/file", "old");
  EXPECT_TRUE(files_.createFile("a/folder", "new"));
  EXPECT_THAT(files_.list("a"), ElementsAre("folder"));
  EXPECT_EQ(files_.readFile("a/folder/file"), "old");
}

TEST_F(PosixFilesConcurrent, readersFindTheOldFileOrTheNewOne) {
  ASSERT_FALSE(files_.createFolders(""));
  const std::vector<std::string> texts{std::string(50'000, 'a'), std::string(70'000, 'b')};
  ASSERT_FALSE(files_.createFile("file", texts[0]));
  std::vector<test::JoiningThread> writers;
  for (const std::string& text : texts) {
    writers.emplace_back([&] {
      for (int i = 0; i < 50; ++i) EXPECT_FALSE(files_.createFile("file", text));
    });
  }
  for (int i = 0; i < 200; ++i) {
    const auto found = files_.readFile("file");
    ASSERT_TRUE(found == texts[0] || found == texts[1]);
  }
  writers.clear();
  EXPECT_THAT(files_.list(""), ElementsAre("file"));
}

}  // namespace
}  // namespace tern::detail
