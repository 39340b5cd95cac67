#include "TernCoreKit/service/TernFileCaching.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/EndlessSaves.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/JoiningThread.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* key = "/venue/7/full?v=4.12&locale=en-US&geojson=false";
constexpr const char* entryFile =
    "Tern/cache/5.12.2/venue/7/full?v=4.12&locale=en-US&geojson=false/data.json";

class TernFileCaching : public testing::Test {
 protected:
  std::shared_ptr<tern::TernFileCaching> open(std::string version = "5.12.2") const {
    return tern::TernFileCaching::initWithVersion(std::move(version),
                                                  makeFileSystem(folder_.path().string()));
  }

  static Value read(const tern::TernFileCaching& cache, const Value& at,
                    std::optional<TernError>* failure = nullptr) {
    Value read;
    int calls = 0;
    cache.getCacheFileAtPath(at, [&](std::optional<TernError> error, Value answer) {
      ++calls;
      read = std::move(answer);
      if (failure != nullptr) *failure = std::move(error);
    });
    EXPECT_EQ(calls, 1);
    return read;
  }

  static std::optional<TernError> remove(const tern::TernFileCaching& cache, const Value& at) {
    std::optional<TernError> result = TernError{};
    cache.deleteFileAtPath(at, [&](std::optional<TernError> error) { result = std::move(error); });
    return result;
  }

  const test::TemporaryFolder folder_;
  test::CapturedLog log_;
};
using TernFileCachingConcurrent = TernFileCaching;

TEST_F(TernFileCaching, knowsItsVersionAndItsFiles) {
  const auto files = makeFileSystem(folder_.path().string());
  const auto cache = tern::TernFileCaching::initWithVersion("5.12.2", files);
  EXPECT_EQ(cache->version(), "5.12.2");
  EXPECT_EQ(cache->fileManager(), files);
}

TEST_F(TernFileCaching, keepsAnEntryInFoldersNamedAfterItsKeyQueryIncluded) {
  const auto cache = open();
  EXPECT_EQ(cache->documentFolder(), folder_.path().string());
  EXPECT_FALSE(cache->doesDirectoryExistsAtPath(key));
  ASSERT_TRUE(cache->saveData(R"({"id":7})", key));
  EXPECT_EQ(folder_.read(entryFile), R"({"id":7})");
  EXPECT_TRUE(cache->doesFileExistsAtPath(key));
  EXPECT_TRUE(cache->doesDirectoryExistsAtPath(key));
  EXPECT_EQ(read(*cache, key)["id"].integer(), 7);
}

TEST_F(TernFileCaching, savingReplacesWhatTheEntryHeld) {
  const auto cache = open();
  ASSERT_TRUE(cache->saveData(R"({"a":"longer than the next"})", key));
  ASSERT_TRUE(cache->saveData("{}", key));
  EXPECT_EQ(folder_.read(entryFile), "{}");
  EXPECT_THAT(cache->fileManager()->list(fs::path(entryFile).parent_path().string()),
              ElementsAre("data.json"));
}

TEST_F(TernFileCaching, reportsAnEntryThatIsMissing) {
  std::optional<TernError> error;
  EXPECT_TRUE(read(*open(), key, &error).isAbsent());
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, "TN007");
  EXPECT_EQ(error->message, "Object not found");
  EXPECT_EQ(error->errorDescription, std::string("No data found in cache for path: ") + key);
}

TEST_F(TernFileCaching, reportsAnEntryThatIsNoJson) {
  folder_.write(entryFile, R"({"a":)");
  std::optional<TernError> error;
  EXPECT_TRUE(read(*open(), key, &error).isAbsent());
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, "TN007");
  EXPECT_THAT(error->errorDescription, testing::StartsWith("Error parsing JSON: "));
}

TEST_F(TernFileCaching, handsOnAListToACallerThatExpectsAMap) {
  folder_.write(entryFile, "[1,2]");
  std::optional<TernError> error = TernError{};
  EXPECT_EQ(read(*open(), key, &error), Value::list({1, 2}));
  EXPECT_FALSE(error);
}

TEST_F(TernFileCaching, createDirectorySaysWhetherItMadeTheFolder) {
  const auto cache = open();
  EXPECT_TRUE(cache->createDirectoryWithPath("/a/b"));
  EXPECT_FALSE(cache->createDirectoryWithPath("/a/b"));
  folder_.write("Tern/cache/5.12.2/file", "");
  EXPECT_FALSE(cache->createDirectoryWithPath("/file/b"));
  EXPECT_THAT(log_.take(), ElementsAre("Create directory error: Not a directory"));
}

TEST_F(TernFileCaching, logsASaveThatFails) {
  const auto cache = open();
  fs::create_directories(folder_.path() / entryFile);
  EXPECT_FALSE(cache->saveData("{}", key));
  EXPECT_THAT(log_.take(), ElementsAre("Error was code: 21 - message: Is a directory"));
}

TEST_F(TernFileCaching, deletingAnEntryThatWasNeverWrittenReportsNothing) {
  EXPECT_FALSE(remove(*open(), key));
}

TEST_F(TernFileCaching, deletingEmptiesTheEntryAndKeepsItsFolder) {
  const auto cache = open();
  ASSERT_TRUE(cache->saveData("{}", key));
  folder_.write(fs::path(entryFile).replace_filename("inner/file").string(), "");
  EXPECT_FALSE(remove(*cache, key));
  EXPECT_TRUE(cache->doesDirectoryExistsAtPath(key));
  EXPECT_FALSE(cache->doesFileExistsAtPath(key));
  EXPECT_TRUE(fs::is_empty((folder_.path() / entryFile).parent_path()));
}

TEST_F(TernFileCaching, keysThatAreNoTextAreErrors) {
  const auto cache = open();
  EXPECT_FALSE(cache->doesFileExistsAtPath(7));
  EXPECT_FALSE(cache->saveData("{}", 7));
  EXPECT_FALSE(cache->saveData("{}", ""));
  EXPECT_THAT(log_.take(), ElementsAre("No key to save under: 7", "No key to save under: "));
  const auto error = remove(*cache, 7);
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, "TN006");
  EXPECT_EQ(error->message, "Could not remove file at path: 7");
  EXPECT_EQ(error->errorDescription,
            TernError::defaultErrorDescriptionForErrorType(TernErrorTypeIncorrectObjectType));
}

TEST_F(TernFileCaching, replacingLeavesNothingButTheNewAnswer) {
  const auto cache = open();
  ASSERT_TRUE(cache->saveData("old", key));
  folder_.write(fs::path(entryFile).replace_filename(".partial-1-1").string(), "cut o");
  int calls = 0;
  EXPECT_TRUE(cache->replaceData("new", key, [&](const std::optional<TernError>&) { ++calls; }));
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(folder_.read(entryFile), "new");
  EXPECT_THAT(cache->fileManager()->list(fs::path(entryFile).parent_path().string()),
              ElementsAre("data.json"));
}

TEST_F(TernFileCaching, wipingEmptiesTheWholeDocumentsFolder) {
  const auto cache = open();
  ASSERT_TRUE(cache->saveData("{}", key));
  folder_.write("photos/holiday", "");
  std::optional<TernError> result = TernError{};
  cache->clearCacheCompletion([&](std::optional<TernError> error) { result = std::move(error); });
  EXPECT_FALSE(result);
  EXPECT_TRUE(fs::is_empty(folder_.path()));
}

TEST_F(TernFileCaching, keepsACacheOfItsOwnVersion) {
  folder_.write("Tern/cache/5.12.2/file", "");
  folder_.write("photos/holiday", "");
  open();
  EXPECT_TRUE(fs::exists(folder_.path() / "Tern/cache/5.12.2/file"));
  EXPECT_TRUE(fs::exists(folder_.path() / "photos/holiday"));
}

TEST_F(TernFileCaching, anyOtherNameAmongTheVersionsWipesTheDocumentsFolder) {
  for (const char* stray : {"Tern/cache/5.12.1/file", "Tern/cache/.hidden"}) {
    folder_.write("Tern/cache/5.12.2/file", "");
    folder_.write("photos/holiday", "");
    folder_.write(stray, "");
    open();
    EXPECT_TRUE(fs::is_empty(folder_.path())) << stray;
  }
}

// A file system whose items cannot be removed.
class StuckFiles final : public FileSystem {
 public:
  explicit StuckFiles(std::shared_ptr<FileSystem> files) : files_(std::move(files)) {}
  std::string documentsFolder() const override { return files_->documentsFolder(); }
  std::optional<std::string> readFile(std::string_view path, std::size_t most) const override {
    return files_->readFile(path, most);
  }
  std::optional<FileError> createFile(std::string_view path, std::string_view text) override {
    return isFull ? FileError{28, "No space left on device"} : files_->createFile(path, text);
  }
  bool isFile(std::string_view path) const override { return files_->isFile(path); }
  bool isFolder(std::string_view path) const override { return files_->isFolder(path); }
  std::optional<FileError> createFolders(std::string_view path) override {
    return files_->createFolders(path);
  }
  std::vector<std::string> list(std::string_view path) const override { return files_->list(path); }
  std::optional<FileError> remove(std::string_view /*path*/) override {
    return FileError{1, removalText};
  }

  std::string removalText = "Operation not permitted";
  bool isFull = false;

 private:
  const std::shared_ptr<FileSystem> files_;
};

TEST_F(TernFileCaching, reportsTheFirstItemThatCannotBeRemoved) {
  const auto files = std::make_shared<StuckFiles>(makeFileSystem(folder_.path().string()));
  const auto cache = tern::TernFileCaching::initWithVersion("5.12.2", files);
  ASSERT_TRUE(cache->saveData("{}", key));
  const std::string entryFolder = fs::path(folder_.at(entryFile)).parent_path().string();
  auto error = remove(*cache, key);
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, "TN007");
  EXPECT_EQ(error->message, "Could not remove file at path: " + entryFolder);
  EXPECT_EQ(error->errorDescription, "Operation not permitted");

  cache->clearCacheCompletion([&](std::optional<TernError> wiped) { error = std::move(wiped); });
  EXPECT_EQ(error->message, "Error removing file");
  EXPECT_EQ(error->errorDescription, "Error removing file at path: Operation not permitted");

  files->removalText.clear();
  EXPECT_EQ(remove(*cache, key)->errorDescription, "No file found at path");
}

TEST_F(TernFileCaching, logsAVersionCheckThatCannotWipe) {
  folder_.write("Tern/cache/5.12.1/file", "");
  tern::TernFileCaching::initWithVersion(
      "5.12.2", std::make_shared<StuckFiles>(makeFileSystem(folder_.path().string())));
  EXPECT_THAT(log_.take(), ElementsAre("Automatic Clear Cache Error: Error removing file at path: "
                                       "Operation not permitted"));
}

TEST_F(TernFileCaching, keepsTheOldAnswerWhenTheNewOneFindsNoRoom) {
  const auto files = std::make_shared<StuckFiles>(makeFileSystem(folder_.path().string()));
  const auto cache = tern::TernFileCaching::initWithVersion("5.12.2", files);
  ASSERT_TRUE(cache->saveData("old", key));
  files->isFull = true;
  EXPECT_FALSE(cache->replaceData("new", key, [](const std::optional<TernError>&) {}));
  EXPECT_EQ(folder_.read(entryFile), "old");
  EXPECT_THAT(log_.take(), ElementsAre("Error was code: 28 - message: No space left on device"));
}

// So many bytes that nobody has to hold: none of them is touched.
class UntouchedBytes {
 public:
  explicit UntouchedBytes(std::size_t size)
      : size_(size),
        bytes_(
            ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0)) {}
  ~UntouchedBytes() { ::munmap(bytes_, size_); }
  UntouchedBytes(const UntouchedBytes&) = delete;
  UntouchedBytes& operator=(const UntouchedBytes&) = delete;

  std::string_view text() const { return {static_cast<const char*>(bytes_), size_}; }

 private:
  std::size_t size_;
  void* bytes_;
};

TEST_F(TernFileCaching, refusesAnAnswerBeyondTheBound) {
  const auto cache = open();
  ASSERT_TRUE(cache->saveData("{}", key));
  const UntouchedBytes tooLong(tern::TernFileCaching::mostEntryBytes + 1);
  EXPECT_FALSE(cache->saveData(tooLong.text(), key));
  EXPECT_FALSE(cache->replaceData(tooLong.text(), key, [](const std::optional<TernError>&) {}));
  EXPECT_EQ(folder_.read(entryFile), "{}");
  const std::string line =
      "Tern SDK: an answer is not cached, as it is longer than 536870912 bytes: " +
      std::string(key);
  EXPECT_THAT(log_.take(), ElementsAre(line, line));
}

TEST_F(TernFileCaching, readsNoEntryBeyondTheBound) {
  const auto cache = open();
  ASSERT_TRUE(cache->saveData("{}", key));
  fs::resize_file(folder_.at(entryFile), tern::TernFileCaching::mostEntryBytes + 1);
  cache->getCacheFileAtPath(key, [](const std::optional<TernError>& error, const Value& answer) {
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, "TN007");
    EXPECT_TRUE(answer.isAbsent());
  });
  EXPECT_THAT(log_.take(), ElementsAre("Tern SDK: a cached answer cannot be read or is longer than "
                                       "536870912 bytes: " +
                                       std::string(key)));
}

// A file system whose machine stops behind so many changes: all further ones are lost.
class StoppingFiles final : public FileSystem {
 public:
  StoppingFiles(std::shared_ptr<FileSystem> files, int changes)
      : files_(std::move(files)), left_(changes) {}
  std::string documentsFolder() const override { return files_->documentsFolder(); }
  std::optional<std::string> readFile(std::string_view path, std::size_t most) const override {
    return files_->readFile(path, most);
  }
  std::optional<FileError> createFile(std::string_view path, std::string_view text) override {
    return change([&] { return files_->createFile(path, text); });
  }
  bool isFile(std::string_view path) const override { return files_->isFile(path); }
  bool isFolder(std::string_view path) const override { return files_->isFolder(path); }
  std::optional<FileError> createFolders(std::string_view path) override {
    return change([&] { return files_->createFolders(path); });
  }
  std::vector<std::string> list(std::string_view path) const override { return files_->list(path); }
  void removeAbandoned(std::string_view path) override {
    change([&]() -> std::optional<FileError> {
      files_->removeAbandoned(path);
      return std::nullopt;
    });
  }
  std::optional<FileError> remove(std::string_view path) override {
    return change([&] { return files_->remove(path); });
  }

  bool hasStopped() const { return left_ < 0; }

 private:
  template <class Change>
  std::optional<FileError> change(Change change) {
    return --left_ < 0 ? FileError{5, "Input/output error"} : change();
  }

  const std::shared_ptr<FileSystem> files_;
  int left_;
};

TEST_F(TernFileCaching, stoppingAtAnyStepOfASaveLeavesTheOldAnswerOrTheNew) {
  bool isOver = false;
  int steps = 0;
  for (; !isOver; ++steps) {
    fs::remove_all(folder_.at("Tern"));
    folder_.write(entryFile, "\"old\"");
    const fs::path inFolder = fs::path(entryFile).parent_path();
    folder_.write((inFolder / "stray/file").string(), "");
    folder_.write((inFolder / ".partial-7-1").string(), "torn");
    const auto files =
        std::make_shared<StoppingFiles>(makeFileSystem(folder_.path().string()), steps);
    const auto stopping = tern::TernFileCaching::initWithVersion("5.12.2", files);
    stopping->replaceData("\"new\"", key, [](const std::optional<TernError>&) {});
    isOver = !files->hasStopped();

    const auto cache = open();
    const Value found = read(*cache, key);
    EXPECT_TRUE(found.text() == "old" || found.text() == "new") << steps;
    EXPECT_TRUE(cache->replaceData("\"next\"", key, [](const std::optional<TernError>&) {}));
    EXPECT_EQ(read(*cache, key).text(), "next");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path() / inFolder), {}), 1) << steps;
  }
  EXPECT_GE(steps, 3);
  log_.take();
}

// Killed for good, wherever it stands, with another writer beside it: nothing is torn, nothing
// blocks, and nothing is left after the next save.
TEST_F(TernFileCaching, writersThatAreKilledAnywhereTearNothing) {
  const int kills = test::isEveryFailureWanted() ? 1000 : 20;
  const std::string documents = folder_.path().string();
  test::EndlessSaves survivor(documents);
  survivor.awaitSome(1);
  for (int i = 0; i < kills; ++i) {
    test::EndlessSaves killed(documents);
    killed.awaitSome(1 + i % 3);
    killed.kill();
    const std::string held = folder_.read("Tern/cache/5.12.2/venue/7/full/data.json");
    ASSERT_TRUE(test::isWholeSave(held)) << held.size() << " bytes, kill " << i;
    survivor.awaitSome(1);
  }
  survivor.kill();
  EXPECT_TRUE(open()->saveData("{}", test::savedKey));
  const fs::path entryFolder = folder_.path() / "Tern/cache/5.12.2/venue/7/full";
  EXPECT_EQ(std::distance(fs::directory_iterator(entryFolder), {}), 1);
}

std::string manyNames(int count) {
  std::string names;
  for (int i = 0; i < count; ++i) names += "/a";
  return names;
}

class TernFileCachingKey : public TernFileCaching,
                           public testing::WithParamInterface<std::string> {};

TEST_P(TernFileCachingKey, thatCannotBeStoredTouchesNothing) {
  folder_.write("documents/Tern/cache/5.12.2/a/data.json", "{}");
  folder_.write("documents/data.json", "{}");
  folder_.write("data.json", "{}");
  const auto cache =
      tern::TernFileCaching::initWithVersion("5.12.2", makeFileSystem(folder_.at("documents")));
  const Value at = GetParam();
  std::optional<TernError> error;
  EXPECT_TRUE(read(*cache, at, &error).isAbsent());
  EXPECT_EQ(error->code, "TN007");
  EXPECT_FALSE(cache->doesFileExistsAtPath(at));
  EXPECT_FALSE(cache->doesDirectoryExistsAtPath(at));
  EXPECT_FALSE(cache->createDirectoryWithPath(at));
  EXPECT_FALSE(cache->saveData("text", at));
  EXPECT_THAT(log_.take(), ElementsAre(testing::StartsWith("No key to save under: ")));
  EXPECT_FALSE(remove(*cache, at));
  EXPECT_EQ(folder_.read("documents/Tern/cache/5.12.2/a/data.json"), "{}");
  EXPECT_EQ(folder_.read("documents/data.json"), "{}");
  EXPECT_EQ(folder_.read("data.json"), "{}");
  EXPECT_THAT(cache->fileManager()->list("Tern/cache/5.12.2"), ElementsAre("a"));
  EXPECT_THAT(cache->fileManager()->list("Tern/cache"), ElementsAre("5.12.2"));
}

INSTANTIATE_TEST_SUITE_P(Keys, TernFileCachingKey,
                         testing::Values("/..", "/../../..", "/a/../../../..", "/a/.", "/./a",
                                         "/a/..", ".", "/..?v=1/..", "a", "-other",
                                         "/" + std::string(256, 'x'),
                                         "/a/" + std::string(300, 'x') + "/b", manyNames(33),
                                         std::string("/a\0b", 4)));

TEST_F(TernFileCaching, storesNamesOfTheGreatestLength) {
  const auto cache = open();
  EXPECT_TRUE(cache->saveData("{}", "/" + std::string(255, 'x')));
}

TEST_F(TernFileCaching, storesKeysOfTheGreatestDepth) {
  const auto cache = open();
  EXPECT_TRUE(cache->saveData("{}", manyNames(32)));
  EXPECT_TRUE(cache->doesFileExistsAtPath(manyNames(32)));
}

TEST_F(TernFileCaching, removesAtItsStartWhatCrashesHaveLeft) {
  folder_.write("Tern/cache/5.12.2/venue/7/.partial-7-1", "torn");
  open();
  EXPECT_FALSE(fs::exists(folder_.at("Tern/cache/5.12.2/venue/7/.partial-7-1")));
}

TEST_F(TernFileCaching, removingFollowsNoLink) {
  const test::TemporaryFolder outside;
  outside.write("file", "mine");
  const auto cache = open();
  ASSERT_TRUE(cache->saveData("{}", key));
  const fs::path entryFolder = (folder_.path() / entryFile).parent_path();
  fs::create_directory_symlink(outside.path(), entryFolder / "link");
  EXPECT_FALSE(remove(*cache, key));
  fs::remove_all(entryFolder);
  fs::create_directory_symlink(outside.path(), entryFolder);
  EXPECT_FALSE(remove(*cache, key));
  EXPECT_FALSE(cache->saveData("{}", key));
  EXPECT_FALSE(cache->doesFileExistsAtPath(key));
  cache->clearCacheCompletion([](const std::optional<TernError>& error) { EXPECT_FALSE(error); });
  EXPECT_EQ(outside.read("file"), "mine");
  EXPECT_FALSE(fs::exists(outside.path() / "data.json"));
  EXPECT_THAT(log_.take(), ElementsAre("Create directory error: Not a directory"));
}

TEST_F(TernFileCachingConcurrent, cachesOfOneFolderLoseNoSave) {
  const auto one = open();
  const auto other = open();
  const std::vector<std::string> answers{R"({"a":")" + std::string(20'000, 'a') + R"("})",
                                         R"({"a":")" + std::string(30'000, 'b') + R"("})"};
  {
    std::vector<test::JoiningThread> writers;
    for (const auto& [cache, answer] : {std::pair(one, answers[0]), std::pair(other, answers[1])}) {
      writers.emplace_back([cache = cache, answer = answer] {
        for (int i = 0; i < 30; ++i) {
          EXPECT_TRUE(
              cache->replaceData(answer, key, [](const auto& error) { EXPECT_FALSE(error); }));
        }
      });
    }
    for (int i = 0; i < 100; ++i) {
      one->getCacheFileAtPath(key, [](const std::optional<TernError>& error, const Value& answer) {
        if (error) return;
        EXPECT_GE(answer["a"].text().size(), 20'000U);
      });
    }
  }
  ASSERT_TRUE(one->saveData(answers[0], key));
  EXPECT_EQ(folder_.read(entryFile), answers[0]);
}

}  // namespace
}  // namespace tern
