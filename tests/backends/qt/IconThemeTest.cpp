#include "backends/qt/icons/IconTheme.h"

#include "tests/backends/qt/TestPictures.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

class IconThemeTest : public testing::Test {
protected:
  void SetUp() override {
    writeThemeIndex(m_icons / "Chosen",
                    {"16x16/apps Fixed 16", "48x48/apps Fixed 48", "256x256/apps Fixed 256",
                     "scalable/apps Scalable 128 64 200"},
                    "Parent");
    writeThemeIndex(m_icons / "Parent", {"48x48/apps Fixed 48"}, "Chosen,hicolor");
    writeThemeIndex(m_icons / "hicolor", {"48x48/apps Threshold 48"});
    writeThemeIndex(m_icons / "Complete", {"48x48/apps Fixed 48"});
  }
  IconTheme theme() const { return IconTheme("Chosen", folders(), "Complete"); }
  IconTheme::Folders folders() const {
    return {{QString::fromStdString(m_icons.string())},
            {QString::fromStdString((m_folder.path() / "loose").string())}};
  }
  void add(const std::string& file) { writeText(m_icons / file, "x"); }
  std::string found(const IconTheme& theme, const QString& icon, int size) const {
    const auto file = theme.file(icon, size);
    return file ? std::filesystem::relative(file->toStdString(), m_icons).string() : "none";
  }

  test::TemporaryDirectory m_folder{"orbel-icons"};
  std::filesystem::path m_icons = m_folder.path() / "icons";
};

TEST_F(IconThemeTest, PrefersTheFileOfTheAskedSize) {
  add("Chosen/16x16/apps/editor.png");
  add("Chosen/48x48/apps/editor.png");
  add("Chosen/256x256/apps/editor.png");
  EXPECT_EQ(found(theme(), "editor", 48), "Chosen/48x48/apps/editor.png");
  EXPECT_EQ(found(theme(), "editor", 16), "Chosen/16x16/apps/editor.png");
}

TEST_F(IconThemeTest, ShrinksALargerFileRatherThanMagnifyingASmallerOne) {
  add("Chosen/48x48/apps/editor.png");
  add("Chosen/256x256/apps/editor.png");
  EXPECT_EQ(found(theme(), "editor", 64), "Chosen/256x256/apps/editor.png");
}

TEST_F(IconThemeTest, MagnifiesADrawingRatherThanALargerBitmap) {
  add("Chosen/256x256/apps/editor.png");
  add("Chosen/scalable/apps/editor.svg");
  EXPECT_EQ(found(theme(), "editor", 640), "Chosen/scalable/apps/editor.svg");
}

TEST_F(IconThemeTest, TakesTheLargestBitmapWhereAllAreTooSmall) {
  add("Chosen/16x16/apps/editor.png");
  add("Chosen/256x256/apps/editor.png");
  add("Chosen/48x48/apps/editor.png");
  EXPECT_EQ(found(theme(), "editor", 640), "Chosen/256x256/apps/editor.png");
}

TEST_F(IconThemeTest, DoesNotTakeABitmapInAScalableFolderForOneOfEverySize) {
  add("Chosen/scalable/apps/editor.png"); // 128 pixels, although the folder says up to 200
  add("Chosen/256x256/apps/editor.png");
  EXPECT_EQ(found(theme(), "editor", 190), "Chosen/256x256/apps/editor.png");
}

TEST_F(IconThemeTest, AsksParentsThenTheFallbackThenHicolorThenLooseFiles) {
  writeText(m_folder.path() / "loose/editor.png", "x");
  EXPECT_EQ(found(theme(), "editor", 48), "../loose/editor.png");
  add("hicolor/48x48/apps/editor.png");
  EXPECT_EQ(found(theme(), "editor", 48), "hicolor/48x48/apps/editor.png");
  add("Complete/48x48/apps/editor.png");
  EXPECT_EQ(found(theme(), "editor", 48), "Complete/48x48/apps/editor.png");
  add("Parent/48x48/apps/editor.png");
  EXPECT_EQ(found(theme(), "editor", 48), "Parent/48x48/apps/editor.png");
  add("Chosen/16x16/apps/editor.png");
  EXPECT_EQ(found(theme(), "editor", 48), "Chosen/16x16/apps/editor.png");
}

TEST_F(IconThemeTest, CountsFoldersForTwofoldScaleInPixels) {
  writeText(m_icons / "Sharp/index.theme",
            "[Icon Theme]\nDirectories=48x48/apps\nScaledDirectories=48x48@2/apps\n"
            "[48x48/apps]\nSize=48\nType=Fixed\n[48x48@2/apps]\nSize=48\nScale=2\nType=Fixed\n");
  add("Sharp/48x48/apps/editor.png");
  add("Sharp/48x48@2/apps/editor.png");
  EXPECT_EQ(found(IconTheme("Sharp", folders()), "editor", 96), "Sharp/48x48@2/apps/editor.png");
}

TEST_F(IconThemeTest, RefusesNamesThatLeadOutOfTheTheme) {
  writeText(m_folder.path() / "secret.png", "x");
  EXPECT_EQ(found(theme(), "../../../../secret", 48), "none");
  EXPECT_EQ(found(theme(), "", 48), "none");
  EXPECT_EQ(found(theme(), "..", 48), "none");
}

TEST_F(IconThemeTest, SurvivesABrokenIndexAndAThemeThatIsNotThere) {
  writeText(m_icons / "Broken/index.theme",
            "[Icon Theme]\nDirectories=a,../..,b\nInherits=Broken,Missing\n[a]\nSize=-1\n[b");
  add("hicolor/48x48/apps/editor.png");
  EXPECT_EQ(found(IconTheme("Broken", folders()), "editor", 48), "hicolor/48x48/apps/editor.png");
  EXPECT_EQ(found(IconTheme("Missing", folders()), "editor", 48), "hicolor/48x48/apps/editor.png");
  EXPECT_FALSE(IconTheme::isInstalled("Missing", folders()));
  EXPECT_TRUE(IconTheme::isInstalled("Chosen", folders()));
}

TEST_F(IconThemeTest, NoticesThatAThemeGotFoldersOrWasRemoved) {
  const IconTheme before = theme();
  EXPECT_FALSE(before.isOutdated());
  std::filesystem::remove_all(m_icons / "Parent");
  EXPECT_TRUE(before.isOutdated());
}

} // namespace
} // namespace orbel::qt
