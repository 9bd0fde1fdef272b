#include "backends/linux/Bookmarks.h"

#include "foundation/PropertyListCoder.h"
#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/support/base/OtherUser.h"
#include "tests/support/glib/MainLoop.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace orbel::linux {
namespace {

class BookmarksTest : public testing::Test {
protected:
  void SetUp() override { DesktopSandbox::write(path, "content"); }

  PropertyList::Data make(const std::string& target) const {
    auto data = bookmarks.make(target);
    EXPECT_TRUE(data) << data.cause();
    return std::move(data).valueOr({});
  }
  static PropertyList::Dictionary decoded(const PropertyList::Data& data) {
    return *PropertyListCoder::read(data)->dictionary();
  }
  static PropertyList::Data encoded(const PropertyList& value) {
    return PropertyListCoder::write(value, PropertyListCoder::Format::binary);
  }
  PropertyList::Data changed(const std::string& key, const PropertyList& value) const {
    auto content = decoded(make(path));
    content.insert_or_assign(key, value);
    return encoded(content);
  }
  void expectResolves(const PropertyList::Data& data, const std::string& target, bool isStale) const {
    const auto resolved = bookmarks.resolve(data);
    ASSERT_TRUE(resolved) << resolved.cause();
    EXPECT_EQ(resolved->path, target);
    EXPECT_EQ(resolved->isStale, isStale);
    EXPECT_FALSE(resolved->drawback);
  }
  void expectError(const PropertyList::Data& data, const std::string& part) const {
    const auto resolved = bookmarks.resolve(data);
    EXPECT_FALSE(resolved);
    EXPECT_NE(resolved.cause().find(part), std::string::npos) << resolved.cause();
  }

  const std::string folder = DesktopSandbox::shared().makeFolder();
  const std::string path = folder + "/letter.txt";
  DesktopEntryIndex entries;
  Bookmarks bookmarks{entries};
};

TEST_F(BookmarksTest, ResolveToTheirPathWhileTheFileIsThere) {
  expectResolves(make(path), path, false);
  expectResolves(make(folder), folder, false);
}

TEST_F(BookmarksTest, HoldPathInodeBirthTimeAndFileSystem) {
  const auto data = make(path);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(data.data()), 6), "bplist");
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  const auto content = decoded(data);
  EXPECT_EQ(content.at("path"), PropertyList(path));
  EXPECT_EQ(content.at("inode"), PropertyList(static_cast<std::int64_t>(status.st_ino)));
  EXPECT_NE(content.at("birthTime").integer(), nullptr);
  EXPECT_NE(content.at("fileSystem").integer(), nullptr);
  EXPECT_EQ(content.count("desktopEntry"), 0u);
}

TEST_F(BookmarksTest, AreStaleWhenAnotherFileHasTakenThePath) {
  const auto data = make(path);
  DesktopSandbox::write(folder + "/new", "other");
  std::filesystem::rename(folder + "/new", path);
  expectResolves(data, path, true);
}

TEST_F(BookmarksTest, AreStaleWhenOnlyTheBirthTimeDiffersBecauseInodesAreUsedAgain) {
  expectResolves(changed("birthTime", std::int64_t{12345}), path, true);
}

TEST_F(BookmarksTest, FindTheSameFileUnderAnotherNameInItsFolder) {
  const auto data = make(path);
  std::filesystem::rename(path, folder + "/renamed.txt");
  expectResolves(data, folder + "/renamed.txt", true);
}

TEST_F(BookmarksTest, DoNotTakeAnotherFileWithTheSameInodeForTheirs) {
  const auto data = changed("birthTime", std::int64_t{12345});
  std::filesystem::rename(path, folder + "/other.txt");
  expectError(data, "does not exist");
}

TEST_F(BookmarksTest, DoNotGoByTheInodeAloneWhereNoBirthTimeIsKnown) {
  auto content = decoded(make(path));
  content.erase("birthTime");
  std::filesystem::rename(path, folder + "/other.txt");
  expectError(encoded(content), "does not exist");
}

TEST_F(BookmarksTest, FindADesktopEntryInAnotherDataFolder) {
  auto& desktop = DesktopSandbox::shared();
  const auto own = desktop.installEntry("org.example.Moved.desktop", "Name=Moved\nExec=/bin/sh\n");
  const auto data = make(own);
  EXPECT_EQ(decoded(data).at("desktopEntry"), PropertyList("org.example.Moved.desktop"));
  const auto system = desktop.installSystemEntry("org.example.Moved.desktop", "Name=Moved\nExec=/bin/sh\n");
  desktop.removeEntry("org.example.Moved.desktop");
  EXPECT_TRUE(test::iterateUntil([&] {
    const auto* entry = entries.withIdentifier("org.example.Moved");
    return entry && entry->path == system;
  }));
  expectResolves(data, system, true);
  desktop.removeAllEntries();
  EXPECT_TRUE(test::iterateUntil([&] { return entries.withIdentifier("org.example.Moved") == nullptr; }));
  expectError(data, "does not exist");
}

TEST_F(BookmarksTest, AreErrorsWhenTheFileIsGoneFromAFolderThatIsThere) {
  const auto data = make(path);
  std::filesystem::remove(path);
  expectError(data, path + " does not exist");
}

TEST_F(BookmarksTest, KeepThePlainPathWhenTheFolderIsGone) {
  const std::string inner = folder + "/disk/letters/a.txt";
  DesktopSandbox::write(inner, "x");
  const auto data = make(inner);
  std::filesystem::remove_all(folder + "/disk");
  expectResolves(data, inner, false);
}

TEST_F(BookmarksTest, KeepThePlainPathWhenTheDiskIsNotMountedInItsFolder) {
  const auto data = changed("fileSystem", std::int64_t{987654321});
  std::filesystem::remove(path);
  expectResolves(data, path, false);
}

TEST_F(BookmarksTest, KeepThePlainPathWhenTheFolderMayNotBeLookedInto) {
  const auto data = make(path);
  ::chmod(folder.c_str(), 0700);
  if (::getuid() == 0) {
    EXPECT_TRUE(test::passesAsOtherUser([&] { expectResolves(data, path, false); }));
  } else {
    ::chmod(folder.c_str(), 0);
    expectResolves(data, path, false);
    ::chmod(folder.c_str(), 0700);
  }
}

TEST_F(BookmarksTest, NeedNothingButAPath) {
  expectResolves(encoded(PropertyList::Dictionary{{"path", path}}), path, false);
  std::filesystem::remove(path);
  expectError(encoded(PropertyList::Dictionary{{"path", path}}), "does not exist");
  expectResolves(encoded(PropertyList::Dictionary{{"path", "/no/such/folder/a"}}), "/no/such/folder/a",
                 false);
}

TEST_F(BookmarksTest, IgnoreFieldsOfAnotherType) {
  const PropertyList::Dictionary content{
      {"path", path}, {"inode", "x"}, {"birthTime", true}, {"fileSystem", 1.5}, {"desktopEntry", 3}};
  expectResolves(encoded(content), path, false);
}

TEST_F(BookmarksTest, OfALinkStandForTheLinkItself) {
  const std::string link = folder + "/link";
  ASSERT_EQ(::symlink(path.c_str(), link.c_str()), 0);
  const auto data = make(link);
  std::filesystem::remove(path);
  expectResolves(data, link, false);
}

TEST_F(BookmarksTest, KeepPathsThatAreNoText) {
  const std::string strange = folder + "/caf\xe9.txt";
  DesktopSandbox::write(strange, "x");
  expectResolves(make(strange), strange, false);
}

TEST_F(BookmarksTest, DropASlashAtTheEnd) {
  expectResolves(make(folder + "//"), folder, false);
}

TEST_F(BookmarksTest, CannotBeMadeOfNothing) {
  EXPECT_EQ(bookmarks.make(folder + "/missing").cause(),
            "no bookmark of " + folder + "/missing: No such file or directory");
  EXPECT_FALSE(bookmarks.make("relative/path"));
  EXPECT_FALSE(bookmarks.make(""));
}

TEST_F(BookmarksTest, AreErrorsWhenTheyAreNoBookmarks) {
  expectError({}, "cannot be read");
  expectError(DesktopSandbox::bytes("book\x01garbage"), "cannot be read");
  expectError(encoded(PropertyList::List{path}), "no absolute path");
  expectError(encoded(PropertyList::Dictionary{}), "no absolute path");
  expectError(encoded(PropertyList::Dictionary{{"path", 5}}), "no absolute path");
  expectError(encoded(PropertyList::Dictionary{{"path", ""}}), "no absolute path");
  expectError(encoded(PropertyList::Dictionary{{"path", "relative"}}), "no absolute path");
  expectError(encoded(PropertyList::Dictionary{{"path", DesktopSandbox::bytes(path + std::string(1, '\0'))}}),
              "no absolute path");
}

} // namespace
} // namespace orbel::linux
