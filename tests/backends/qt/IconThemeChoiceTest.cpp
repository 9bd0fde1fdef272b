#include "backends/qt/icons/IconThemeChoice.h"

#include "tests/backends/qt/TestPictures.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

class IconThemeChoiceTest : public testing::Test {
protected:
  void SetUp() override {
    for (const char* theme : {"Alpha", "Beta", "Gamma", "Adwaita"})
      writeThemeIndex(m_folder.path() / "icons" / theme, {});
    qunsetenv("XDG_CURRENT_DESKTOP");
  }
  void TearDown() override { qunsetenv("XDG_CURRENT_DESKTOP"); }
  IconTheme::Folders folders() const {
    return {{QString::fromStdString((m_folder.path() / "icons").string())}, {}};
  }
  QString configured() const {
    return IconThemeChoice::configured(QString::fromStdString(m_configuration.string()), folders());
  }
  void configure(const std::string& file, const std::string& text) {
    writeText(m_configuration / file, text);
  }

  test::TemporaryDirectory m_folder{"orbel-choice"};
  std::filesystem::path m_configuration = m_folder.path() / "config";
};

TEST_F(IconThemeChoiceTest, ReadsTheSettingsFileOfEachDesktop) {
  EXPECT_EQ(configured(), QString());
  configure("gtk-3.0/settings.ini", "[Settings]\ngtk-icon-theme-name=Alpha\n");
  EXPECT_EQ(configured(), "Alpha");
  configure("xfce4/xfconf/xfce-perchannel-xml/xsettings.xml",
            "<?xml version='1.0'?><channel name='xsettings'><property name='Net' type='empty'>"
            "<property name='ThemeName' type='string' value='x'/>"
            "<property name='IconThemeName' type='string' value='Beta'/></property></channel>");
  EXPECT_EQ(configured(), "Beta");
  configure("kdeglobals", "[General]\nName=x\n[Icons]\nTheme=Gamma\n");
  EXPECT_EQ(configured(), "Gamma");
}

TEST_F(IconThemeChoiceTest, AsksTheRunningDesktopsOwnFileFirst) {
  configure("kdeglobals", "[Icons]\nTheme=Gamma\n");
  configure("gtk-3.0/settings.ini", "[Settings]\ngtk-icon-theme-name=Alpha\n");
  qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
  EXPECT_EQ(configured(), "Alpha");
}

TEST_F(IconThemeChoiceTest, PassesOverThemesThatAreNotInstalledAndDamagedFiles) {
  configure("kdeglobals", "[Icons]\nTheme=Uninstalled\n");
  configure("xfce4/xfconf/xfce-perchannel-xml/xsettings.xml", "<channel><property name='IconThemeName'");
  configure("gtk-3.0/settings.ini", "[Settings]\ngtk-icon-theme-name=\"Alpha\"\n");
  EXPECT_EQ(configured(), "Alpha");
}

TEST_F(IconThemeChoiceTest, FallsBackToACompleteThemeAndThenToHicolor) {
  EXPECT_EQ(IconThemeChoice::fallback(folders()), "Adwaita");
  EXPECT_EQ(IconThemeChoice::current(folders()), "Adwaita");
  EXPECT_EQ(IconThemeChoice::current({}), "hicolor");
}

} // namespace
} // namespace orbel::qt
