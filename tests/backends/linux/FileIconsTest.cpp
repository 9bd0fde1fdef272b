#include "backends/linux/FileIcons.h"

#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/backends/linux/FakeIconLoader.h"
#include "tests/support/glib/MainLoop.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>

namespace orbel::linux {
namespace {

class FileIconsTest : public testing::Test {
protected:
  ~FileIconsTest() override {
    desktop.removeAllEntries();
    EXPECT_TRUE(test::iterateUntil([this] { return entries.entries().empty(); }));
  }
  // What is drawn for the file at 48 pixels.
  std::string drawn(const ImagePointer& image) {
    EXPECT_TRUE(image);
    if (!image) return {};
    EXPECT_EQ(image->size(), (Size{320, 320}));
    loader.calls.clear();
    image->representation(48, 48);
    return loader.calls.empty() ? "nothing" : loader.calls.front();
  }
  std::string drawn(const std::string& path) { return drawn(icons.iconForFile(path)); }
  std::string entry(const std::string& icon) {
    const std::string path = folder + "/some.desktop";
    DesktopSandbox::write(path,
                          "[Desktop Entry]\nType=Application\nName=A\nExec=/bin/sh\nIcon=" + icon + "\n");
    return path;
  }

  DesktopSandbox& desktop = DesktopSandbox::shared();
  const std::string folder = desktop.makeFolder();
  FakeIconLoader loader;
  DesktopEntryIndex entries;
  FileIcons icons{loader, entries};
};

TEST_F(FileIconsTest, DrawAnEntrysIconFromTheThemeOrFromItsFile) {
  loader.themeNames = {"paint"};
  loader.files = {"/pictures/paint.svg"};
  EXPECT_EQ(drawn(entry("paint")), "theme paint 48");
  EXPECT_EQ(drawn(entry("paint.png")), "theme paint 48");
  EXPECT_EQ(drawn(entry("/pictures/paint.svg")), "file /pictures/paint.svg 48");
}

TEST_F(FileIconsTest, DrawTheGenericApplicationForABrokenOrMissingIcon) {
  EXPECT_EQ(drawn(entry("no-such-icon")), "own fallback-application 48");
  EXPECT_EQ(drawn(entry("/pictures/broken.png")), "own fallback-application 48");
  EXPECT_EQ(drawn(entry("")), "own fallback-application 48");
  EXPECT_EQ(drawn(folder + "/gone.desktop"), "own fallback-application 48");
  EXPECT_EQ(drawn(folder + "/gone.app"), "own fallback-application 48");
}

TEST_F(FileIconsTest, FindAnIconThatBelongsToNoTheme) {
  const std::string pixmap = desktop.root() + "/system/pixmaps/lonely.png";
  DesktopSandbox::write(pixmap, "x");
  loader.files = {pixmap};
  EXPECT_EQ(drawn(entry("lonely")), "file " + pixmap + " 48");
  EXPECT_EQ(drawn(entry("lonely.png")), "file " + pixmap + " 48");
  loader.themeNames = {"lonely"};
  EXPECT_EQ(drawn(entry("lonely")), "theme lonely 48");
}

TEST_F(FileIconsTest, DrawFilesByTheirContentType) {
  DesktopSandbox::write(folder + "/a.orbeltest", "x");
  loader.themeNames = {"application-x-orbel-test"};
  EXPECT_EQ(drawn(folder + "/a.orbeltest"), "theme application-x-orbel-test 48");
  loader.themeNames.clear();
  EXPECT_EQ(drawn(icons.iconForFile(folder + "/a.orbeltest")), "own fallback-file 48");
}

TEST_F(FileIconsTest, DrawFoldersAndApplicationFolders) {
  std::filesystem::create_directory(folder + "/Music");
  std::filesystem::create_directory(folder + "/Tool.app");
  EXPECT_EQ(drawn(folder + "/Music"), "own fallback-folder 48");
  EXPECT_EQ(drawn(folder + "/Tool.app"), "own fallback-application 48");
  loader.themeNames = {"folder", "application-x-executable"};
  EXPECT_EQ(drawn(folder + "/Music/"), "theme folder 48");
}

TEST_F(FileIconsTest, DrawSomethingForMissingFiles) {
  EXPECT_EQ(drawn(folder + "/missing.txt"), "own fallback-file 48");
  EXPECT_EQ(drawn(std::string()), "own fallback-file 48");
}

TEST_F(FileIconsTest, DrawAnAppImageAsAnApplicationAndByItsEntryWhereItHasOne) {
  const std::string path = folder + "/Paint.AppImage";
  DesktopSandbox::write(path, "x");
  ::chmod(path.c_str(), 0755);
  EXPECT_EQ(drawn(path), "own fallback-application 48");
  desktop.installEntry("paint.desktop", "Name=Paint\nIcon=paint\nExec=" + path + " %U\n");
  ASSERT_TRUE(test::iterateUntil([&] { return entries.withExecutable(path) != nullptr; }));
  loader.themeNames = {"paint"};
  EXPECT_EQ(drawn(path), "theme paint 48");
}

TEST_F(FileIconsTest, ShareOneImageAmongFilesWithTheSamePictureWhileSomebodyHoldsIt) {
  DesktopSandbox::write(folder + "/a.orbeltest", "x");
  DesktopSandbox::write(folder + "/b.orbeltest", "x");
  loader.themeNames = {"application-x-orbel-test"};
  auto first = icons.iconForFile(folder + "/a.orbeltest");
  EXPECT_EQ(first, icons.iconForFile(folder + "/b.orbeltest"));
  EXPECT_NE(first, icons.iconForFile(folder + "/missing"));
  const std::weak_ptr<const Image> weak = first;
  first.reset();
  EXPECT_TRUE(weak.expired());
}

TEST_F(FileIconsTest, DrawAtTheWantedSizeOnly) {
  loader.themeNames = {"paint"};
  const auto image = icons.iconForFile(entry("paint"));
  EXPECT_TRUE(loader.calls.empty());
  image->representation(150, 150);
  image->representation(75, 75);
  EXPECT_EQ(loader.calls, std::vector<std::string>{"theme paint 150"});
}

TEST_F(FileIconsTest, HaveOurOwnPicturesByName) {
  EXPECT_EQ(drawn(icons.imageNamed("Finder")), "own Finder 48");
  EXPECT_EQ(icons.imageNamed("Nothing"), nullptr);
}

TEST_F(FileIconsTest, SayWhetherAnEntryHasAPictureOfItsOwn) {
  DesktopEntry described;
  EXPECT_FALSE(icons.hasIcon(described));
  described.icon = "paint";
  EXPECT_FALSE(icons.hasIcon(described));
  loader.themeNames = {"paint"};
  EXPECT_TRUE(icons.hasIcon(described));
  described.icon = "/no/such/picture.png";
  EXPECT_FALSE(icons.hasIcon(described));
}

} // namespace
} // namespace orbel::linux
