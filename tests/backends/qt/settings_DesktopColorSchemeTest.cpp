#include "backends/qt/settings/DesktopColorScheme.h"
#include "backends/qt/windows/PlainDisplayServer.h"

#include <QApplication>
#include <QPalette>
#include <QTest>

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

TEST(DesktopColorSchemeTest, AThemeIsDarkWhenItsNameSaysSo) {
  for (const char* name : {"Adwaita-dark", "Breeze-Dark", "Yaru-blue-DARK", "Darkine"})
    EXPECT_EQ(DesktopColorScheme::ofThemeNamed(name), ColorScheme::dark) << name;
  for (const char* name : {"Adwaita", "Breeze", "Greybird", ""})
    EXPECT_EQ(DesktopColorScheme::ofThemeNamed(name), ColorScheme::light) << name;
}

TEST(DesktopColorSchemeTest, WithoutAPortalAndAThemeQtsColoursDecide) {
  const QPalette before = QApplication::palette();
  int told = 0;
  const PlainDisplayServer display;
  const DesktopColorScheme scheme(display, [&] { ++told; });
  QPalette palette;
  palette.setColor(QPalette::Window, Qt::white);
  palette.setColor(QPalette::WindowText, Qt::black);
  QApplication::setPalette(palette);
  EXPECT_EQ(scheme.current(), ColorScheme::light);
  palette.setColor(QPalette::Window, QColor(30, 30, 30));
  palette.setColor(QPalette::WindowText, Qt::white);
  told = 0;
  QApplication::setPalette(palette);
  EXPECT_EQ(scheme.current(), ColorScheme::dark);
  EXPECT_TRUE(QTest::qWaitFor([&] { return told > 0; }));
  QApplication::setPalette(before);
}

} // namespace
} // namespace orbel::qt
