#include "backends/qt/icons/QtIconLoader.h"

#include "tests/backends/qt/TestPictures.h"
#include "tests/support/base/LogCapture.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <QColor>
#include <QIcon>

#include <gtest/gtest.h>

#include <filesystem>

namespace orbel::qt {
namespace {

class QtIconLoaderTest : public testing::Test {
protected:
  void SetUp() override {
    writeThemeIndex(m_icons / "hicolor", {"48x48/apps Fixed 48"});
    writePicture(m_icons / "hicolor/48x48/apps/editor.png", 48, 48, Qt::red);
    writeText(m_icons / "hicolor/48x48/apps/broken.png", "no picture");
  }
  IconTheme::Folders folders() const { return {{QString::fromStdString(m_icons.string())}, {}}; }

  test::TemporaryDirectory m_folder{"orbel-loader"};
  std::filesystem::path m_icons = m_folder.path() / "icons";
  test::LogCapture m_log;
  QtIconLoader m_loader{QStringLiteral("hicolor"), folders()};
};

TEST_F(QtIconLoaderTest, LoadsTheFirstNameThatTheThemeHas) {
  const Bitmap bitmap = m_loader.themeIcon({"unknown", "editor"}, 48);
  ASSERT_EQ(bitmap.width, 48);
  EXPECT_EQ(bitmap.pixels.at(0), pixelOf(Qt::red));
  EXPECT_TRUE(m_loader.hasThemeIcon({"unknown", "editor"}));
}

TEST_F(QtIconLoaderTest, HasNothingForUnknownNames) {
  EXPECT_TRUE(m_loader.themeIcon({"unknown"}, 48).isEmpty());
  EXPECT_TRUE(m_loader.themeIcon({}, 48).isEmpty());
  EXPECT_FALSE(m_loader.hasThemeIcon({"unknown", ""}));
  EXPECT_TRUE(m_log.lines.empty());
}

TEST_F(QtIconLoaderTest, AcceptsNamesWithTheExtensionOfAPicture) {
  EXPECT_EQ(m_loader.themeIcon({"editor.png"}, 48).width, 48);
}

TEST_F(QtIconLoaderTest, GoesOnToTheNextNameAfterABrokenFile) {
  EXPECT_EQ(m_loader.themeIcon({"broken", "editor"}, 48).width, 48);
  EXPECT_TRUE(m_log.has("broken.png"));
}

TEST_F(QtIconLoaderTest, ReadsPictureFilesWithAnyCharactersInTheirNames) {
  const auto file = m_folder.path() / "Bild mit % & Übergröße 图.png";
  writePicture(file, 20, 20, Qt::blue);
  EXPECT_EQ(m_loader.pictureFile(file.string(), 20).width, 20);
}

TEST_F(QtIconLoaderTest, HasThePicturesThatShipWithTheProgram) {
  for (const char* name : {"Finder", "Launchpad", "App Store", "iTunes", "Safari", "Mail",
                           "fallback-application", "fallback-file", "fallback-folder"}) {
    EXPECT_TRUE(m_loader.hasOwnPicture(name)) << name;
    EXPECT_EQ(m_loader.ownPicture(name, 150).width, 150) << name;
  }
  EXPECT_FALSE(m_loader.hasOwnPicture("Nothing of ours"));
  EXPECT_FALSE(m_loader.hasOwnPicture("../translations/de"));
  EXPECT_TRUE(m_loader.ownPicture("Nothing of ours", 150).isEmpty());
  EXPECT_TRUE(m_log.lines.empty());
}

TEST_F(QtIconLoaderTest, FollowsTheDesktopsThemeAlsoForQt) {
  const std::filesystem::path data = qEnvironmentVariable("XDG_DATA_HOME").toStdString();
  writeThemeIndex(data / "icons/Wished", {"48x48/apps Fixed 48"});
  writePicture(data / "icons/Wished/48x48/apps/only-in-wished.png", 48, 48, Qt::red);
  const std::filesystem::path configuration = qEnvironmentVariable("XDG_CONFIG_HOME").toStdString();
  writeText(configuration / "gtk-3.0/settings.ini", "[Settings]\ngtk-icon-theme-name=Wished\n");
  QtIconLoader loader;
  EXPECT_EQ(loader.themeIcon({"only-in-wished"}, 48).width, 48);
  EXPECT_EQ(QIcon::themeName(), "Wished");
  std::filesystem::remove_all(configuration / "gtk-3.0");
}

} // namespace
} // namespace orbel::qt
