// The real menu on Qt's rooms alone: shown, swept around by the pointer, and looked at.
#include "backends/qt/windows/BubbleWindow.h"
#include "backends/qt/windows/MenuWindow.h"
#include "backends/qt/windows/ScreenSpace.h"
#include "controllers/OrbelWindowController.h"
#include "tests/rooms/RoomsDesktop.h"
#include "tests/rooms/WindowPictures.h"
#include "view/RadialGeometry.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace orbel::rooms {
namespace {

constexpr double kSide = 500; // of the menu, in points
constexpr QRgb kNothing = qRgb(0, 0, 0);
// A tile's edges are blended with the disc, and its place is rounded.
constexpr double kTolerance = 2;

struct Entry {
  const char* name;
  QRgb color;
};
constexpr Entry kEntries[] = {{"Mail", qRgb(220, 40, 40)},      {"Music", qRgb(240, 140, 0)},
                              {"Photos", qRgb(210, 190, 0)},    {"Notes", qRgb(30, 150, 60)},
                              {"Calendar", qRgb(0, 160, 170)},  {"Browser", qRgb(40, 90, 220)},
                              {"Terminal", qRgb(110, 60, 200)}, {"Files", qRgb(200, 50, 160)}};
constexpr std::size_t kCount = std::size(kEntries);

Color color(QRgb rgb) {
  return {qRed(rgb) / 255.0, qGreen(rgb) / 255.0, qBlue(rgb) / 255.0};
}

class MenuOnQtRoomsTest : public testing::Test {
protected:
  MenuOnQtRoomsTest() {
    PropertyList::List items;
    for (const Entry& entry : kEntries) {
      items.push_back(PropertyList::Dictionary{{"class", "CoreMenuItem"}, {"name", entry.name}});
      m_desktop.workspace.colors[entry.name] = color(entry.color);
    }
    m_desktop.preferences.values["menuItems"] = std::move(items);
    m_desktop.preferences.values["menuSizeSettings"] = 2;
    movePointer(m_center);
    m_controller = OrbelWindowController::create();
    m_controller->showWindowAtScreenPosition(m_center);
    letAnimationsEnd();
  }
  ~MenuOnQtRoomsTest() override {
    m_desktop.runLoop.dropPending();
    m_controller->window().setAlphaValue(0);
    m_controller.reset();
  }

  // Screen points, y up.
  static void movePointer(Point place) {
    const QPoint pixel = qt::ScreenSpace::toQt({place.x, place.y, 0, 0}).topLeft();
    QCursor::setPos(pixel);
    QCoreApplication::processEvents();
  }
  void letAnimationsEnd() {
    m_desktop.runLoop.advance(0.5);
    QCoreApplication::processEvents();
  }
  Point onCircle(double angle) const {
    constexpr double kDistance = 150;
    return {m_center.x + kDistance * std::sin(angle), m_center.y + kDistance * std::cos(angle)};
  }
  // To the middle of that entry's slot, as a hand that moves along the circle, and rests there.
  void sweepTo(std::size_t index) {
    const double target = (static_cast<double>(index) + 0.5) * kFullTurn / static_cast<double>(kCount);
    for (; m_angle < target; m_angle += 0.02) {
      movePointer(onCircle(m_angle));
      m_desktop.runLoop.advance(ManualRunLoop::kFrameInterval);
    }
    movePointer(onCircle(target));
    letAnimationsEnd();
  }
  static Rect screenFrame(const QRect& frame) { return qt::ScreenSpace::fromQt(frame); }
  // Where the picture of the menu shows that entry's colour, in the window's points, y up.
  static Rect shownFrame(const QImage& picture, std::size_t index) {
    QRect found;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        if ((picture.pixel(x, y) | 0xFF000000U) == kEntries[index].color) found |= QRect(x, y, 1, 1);
      }
    }
    return {static_cast<double>(found.x()),
            static_cast<double>(picture.height() - found.y() - found.height()),
            static_cast<double>(found.width()), static_cast<double>(found.height())};
  }
  static void expectNear(const Rect& actual, const Rect& expected, const std::string& what) {
    EXPECT_NEAR(actual.minX(), expected.minX(), kTolerance) << what;
    EXPECT_NEAR(actual.maxX(), expected.maxX(), kTolerance) << what;
    EXPECT_NEAR(actual.minY(), expected.minY(), kTolerance) << what;
    EXPECT_NEAR(actual.maxY(), expected.maxY(), kTolerance) << what;
  }
  // In the window's points at that distance and angle from its middle.
  static QRgb pixelAt(const QImage& picture, double angle, double distance) {
    return picture.pixel(static_cast<int>(kSide / 2 + distance * std::sin(angle)),
                         static_cast<int>(kSide / 2 - distance * std::cos(angle)));
  }

  double m_angle = 0; // where the hand is on the circle
  RoomsDesktop m_desktop;
  const Point m_center = qt::ScreenSpace::frameOf(QGuiApplication::primaryScreen()).center();
  std::shared_ptr<OrbelWindowController> m_controller;
};

TEST_F(MenuOnQtRoomsTest, TheMenuStandsAroundThePoint) {
  const qt::MenuWindow* const menu = WindowPictures::menu();
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(screenFrame(menu->geometry()), Rect::centeredAt(m_center, kSide));
  EXPECT_EQ(menu->opacity(), 1);
  EXPECT_TRUE(m_controller->windowVisible());
}

TEST_F(MenuOnQtRoomsTest, TheDiscIsRoundAndNothingIsShownOutsideIt) {
  const QImage picture = WindowPictures::of(*WindowPictures::menu());
  ASSERT_EQ(picture.size(), QSize(500, 500));
  constexpr double kRadius = kSide / 2;
  for (int step = 0; step < 360; ++step) {
    const double angle = step * std::numbers::pi / 180;
    EXPECT_NE(pixelAt(picture, angle, kRadius - 5), kNothing) << step;
    // Between the disc's edge and the window's corner.
    const double corner = kRadius / std::max(std::abs(std::sin(angle)), std::abs(std::cos(angle)));
    if (corner <= kRadius + 8) continue;
    EXPECT_EQ(pixelAt(picture, angle, corner - 4), kNothing) << step;
    EXPECT_EQ(pixelAt(picture, angle, kRadius + 3), kNothing) << step;
  }
}

TEST_F(MenuOnQtRoomsTest, AtRestEveryItemStandsInItsPlaceAndHasTheSameSize) {
  const QImage picture = WindowPictures::of(*WindowPictures::menu());
  const RadialGeometry circle({kSide, kSide}, kCount);
  for (std::size_t index = 0; index < kCount; ++index) {
    expectNear(shownFrame(picture, index),
               circle.frame(circle.slotCenter(static_cast<std::int64_t>(index)), kFullTurn / kCount),
               kEntries[index].name);
  }
  EXPECT_EQ(WindowPictures::bubble(), nullptr);
  EXPECT_TRUE(WindowPictures::save("rest"));
}

TEST_F(MenuOnQtRoomsTest, ASweepGrowsTheItemUnderThePointerAndShowsItsTitle) {
  const RadialGeometry circle({kSide, kSide}, kCount);
  const double restingSide = circle.side(kFullTurn / kCount);
  for (std::size_t index = 0; index < kCount; ++index) {
    SCOPED_TRACE(kEntries[index].name);
    sweepTo(index);
    const QImage picture = WindowPictures::of(*WindowPictures::menu());
    const Rect grown = shownFrame(picture, index);
    expectNear(grown,
               Rect::centeredAt(circle.pointAt(circle.slotCenter(static_cast<std::int64_t>(index))),
                                circle.largestSide()),
               "the item under the pointer");
    const Rect opposite = shownFrame(picture, (index + kCount / 2) % kCount);
    EXPECT_LT(opposite.size.width, restingSide / 2);
    EXPECT_GT(opposite.size.width, 10);

    const qt::BubbleWindow* const bubble = WindowPictures::bubble();
    ASSERT_NE(bubble, nullptr);
    EXPECT_NEAR(bubble->bodyFrame().midX(), m_center.x - kSide / 2 + grown.midX(), kTolerance);
    EXPECT_LT(bubble->bodyFrame().maxY(), m_center.y - kSide / 2 + grown.minY());
    EXPECT_TRUE(WindowPictures::save("sweep-" + std::to_string(index) + "-" + kEntries[index].name));
  }
}

TEST_F(MenuOnQtRoomsTest, TheTitleIsWrittenDarkOnALightBody) {
  sweepTo(0);
  const qt::BubbleWindow* const bubble = WindowPictures::bubble();
  ASSERT_NE(bubble, nullptr);
  const QRect body =
      qt::ScreenSpace::toQt(bubble->bodyFrame()).translated(-bubble->position()).adjusted(4, 4, -4, -4);
  const QImage picture = WindowPictures::of(*bubble);
  int light = 0, dark = 0;
  for (int y = body.top(); y <= body.bottom(); ++y) {
    for (int x = body.left(); x <= body.right(); ++x) {
      const int level = qGray(picture.pixel(x, y));
      light += level > 200;
      dark += level < 100;
    }
  }
  EXPECT_GT(light, body.width() * body.height() / 2);
  EXPECT_GT(dark, 20);
}

TEST_F(MenuOnQtRoomsTest, ThePointerThatLeavesPutsTheMenuBackToRest) {
  const QImage before = WindowPictures::of(*WindowPictures::menu());
  sweepTo(2);
  EXPECT_NE(WindowPictures::of(*WindowPictures::menu()), before);
  movePointer({m_center.x - kSide / 2 - 20, m_center.y});
  letAnimationsEnd();
  EXPECT_EQ(WindowPictures::bubble(), nullptr);
  const QImage after = WindowPictures::of(*WindowPictures::menu());
  for (std::size_t index = 0; index < kCount; ++index)
    expectNear(shownFrame(after, index), shownFrame(before, index), kEntries[index].name);
}

TEST_F(MenuOnQtRoomsTest, AClickOpensTheItemAndTheMenuAndItsTitleDisappear) {
  sweepTo(5);
  qt::MenuWindow* const menu = WindowPictures::menu();
  ASSERT_NE(WindowPictures::bubble(), nullptr);
  QTest::mouseClick(menu, Qt::LeftButton, {}, QCursor::pos() - menu->position());
  letAnimationsEnd();
  EXPECT_EQ(m_desktop.workspace.actions, std::vector<std::string>{std::string("launch ") + kEntries[5].name});
  EXPECT_EQ(WindowPictures::menu(), nullptr);
  EXPECT_EQ(WindowPictures::bubble(), nullptr);
}

} // namespace
} // namespace orbel::rooms
