#include "backends/linux/FileStorage.h"

#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/support/base/OtherUser.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <thread>

namespace orbel::linux {
namespace {

class FileStorageTest : public testing::Test {
protected:
  using Outcome = FileStorage::Outcome;
  const std::string folder = DesktopSandbox::shared().makeFolder();
  const std::string path = folder + "/file";
};

TEST_F(FileStorageTest, ReadsAFileUpToTheLimit) {
  DesktopSandbox::write(path, "12345");
  EXPECT_EQ(FileStorage::read(path, 5).bytes, DesktopSandbox::bytes("12345"));
  EXPECT_EQ(FileStorage::read(path, 4).outcome, Outcome::tooLarge);
  EXPECT_TRUE(FileStorage::read(path, 4).bytes.empty());
}

TEST_F(FileStorageTest, TellsAMissingFileFromOneThatIsRefused) {
  EXPECT_EQ(FileStorage::read(path, 5).outcome, Outcome::missing);
  EXPECT_EQ(FileStorage::read(folder, 5).outcome, Outcome::refused);
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  EXPECT_EQ(FileStorage::read(path, 5).outcome, Outcome::refused);
  EXPECT_EQ(FileStorage::read("/dev/zero", 5).outcome, Outcome::refused);
}

TEST_F(FileStorageTest, LeavesTheOldFileWhenTheNewOneCannotBeWritten) {
  EXPECT_TRUE(test::passesAsOtherUser([&] {
    const std::string own = folder + "/own";
    ASSERT_EQ(::mkdir(own.c_str(), 0755), 0);
    DesktopSandbox::write(own + "/file", "old");
    ::chmod(own.c_str(), 0555);
    EXPECT_EQ(FileStorage::replace(own + "/file", DesktopSandbox::bytes("new")).cause(), "Permission denied");
    EXPECT_EQ(DesktopSandbox::read(own + "/file"), "old");
    ::chmod(own.c_str(), 0755);
  }));
  EXPECT_FALSE(FileStorage::replace(folder + "/no/folder/file", {}));
}

TEST_F(FileStorageTest, LeavesNothingBehindWhenTheNameCannotBeTaken) {
  std::filesystem::create_directory(path); // a file cannot be renamed over a folder
  EXPECT_EQ(FileStorage::replace(path, DesktopSandbox::bytes("x")).cause(), "Is a directory");
  EXPECT_EQ(DesktopSandbox::list(folder), std::vector<std::string>{"file"});
}

TEST_F(FileStorageTest, ReplacesAFileOfSeveralWritersOnlyWhileItIsAsExpected) {
  using Replacement = FileStorage::Replacement;
  const auto bytes = [](const char* text) { return DesktopSandbox::bytes(text); };
  const auto replace = [&](const std::optional<PropertyList::Data>& expected,
                           const char* text) -> std::optional<Replacement> {
    const auto replaced = FileStorage::replaceIfStill(path, expected, bytes(text));
    return replaced ? std::optional(*replaced) : std::nullopt;
  };
  EXPECT_EQ(replace(bytes("old"), "new"), Replacement::overtaken) << "it has been removed";
  EXPECT_EQ(replace(std::nullopt, "first"), Replacement::done);
  EXPECT_EQ(replace(std::nullopt, "again"), Replacement::overtaken) << "there is one now";
  EXPECT_EQ(DesktopSandbox::read(path), "first");
  EXPECT_EQ(replace(bytes("first"), "second"), Replacement::done);
  for (const char* other : {"", "secon", "second!", "SECOND"}) {
    EXPECT_EQ(replace(bytes(other), "third"), Replacement::overtaken) << other;
    EXPECT_EQ(DesktopSandbox::read(path), "second");
  }
  EXPECT_EQ(DesktopSandbox::list(folder), std::vector<std::string>{"file"});
  EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms{0600});
}

TEST_F(FileStorageTest, NeverReplacesWhatAQuickerProgramHasJustWritten) {
  for (int round = 0; round < 300; ++round) {
    const std::string before = "before " + std::to_string(round);
    const std::string outside = "outside " + std::to_string(round);
    DesktopSandbox::write(path, before);
    std::thread other([&] {
      const std::string temporary = folder + "/other";
      DesktopSandbox::write(temporary, outside);
      std::filesystem::rename(temporary, path);
    });
    const auto replaced =
        FileStorage::replaceIfStill(path, DesktopSandbox::bytes(before), DesktopSandbox::bytes("ours"));
    other.join();
    ASSERT_TRUE(replaced) << replaced.cause();
    // Ours either came before the other's or not at all.
    ASSERT_EQ(DesktopSandbox::read(path), outside) << "round " << round;
  }
}

TEST_F(FileStorageTest, FollowsChainsOfLinksAndStopsAtCircles) {
  std::filesystem::create_directory(folder + "/sub");
  ASSERT_EQ(::symlink("sub/b", (folder + "/a").c_str()), 0);
  ASSERT_EQ(::symlink("../file", (folder + "/sub/b").c_str()), 0);
  EXPECT_EQ(FileStorage::followLinks(folder + "/a"), folder + "/sub/../file");
  EXPECT_EQ(FileStorage::followLinks(path), path);
  ASSERT_EQ(::symlink("circle", (folder + "/circle").c_str()), 0);
  EXPECT_EQ(FileStorage::followLinks(folder + "/circle"), folder + "/circle");
  EXPECT_EQ(FileStorage::read(folder + "/circle", 5).outcome, Outcome::refused);
}

TEST_F(FileStorageTest, MakesFoldersAndSaysWhyItCannot) {
  EXPECT_TRUE(FileStorage::makeFolder(folder + "/a/b/c"));
  EXPECT_TRUE(FileStorage::makeFolder(folder + "/a/b/c"));
  EXPECT_TRUE(std::filesystem::is_directory(folder + "/a/b/c"));
  DesktopSandbox::write(path, "x");
  EXPECT_EQ(FileStorage::makeFolder(path).cause(), "File exists");
  EXPECT_EQ(FileStorage::makeFolder(path + "/below").cause(), "Not a directory");
}

TEST_F(FileStorageTest, SplitsPaths) {
  EXPECT_EQ(FileStorage::folderOf("/a/b"), "/a");
  EXPECT_EQ(FileStorage::folderOf("/a"), "/");
  EXPECT_EQ(FileStorage::nameOf("/a/b"), "b");
}

} // namespace
} // namespace orbel::linux
