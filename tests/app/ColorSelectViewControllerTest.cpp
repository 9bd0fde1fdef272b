#include "app/ColorSelectViewController.h"

#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <set>

namespace orbel {
namespace {

class ColorSelectViewControllerTest : public testing::Test, protected ColorSelectViewControllerDelegate {
protected:
  void didSelectColor(const Color& color) override { selected.push_back(color); }
  static View& buttonIn(const View& box) { return *box.subviews().at(0); }

  FakePlatform platform;
  std::vector<Color> selected;
  std::shared_ptr<ColorSelectViewController> controller = ColorSelectViewController::withDelegate(this);
};

TEST_F(ColorSelectViewControllerTest, OffersWhiteADarkColourAndAtLeastEightOthersAllDifferent) {
  std::set<std::vector<double>> colors;
  int dark = 0;
  for (const auto& box : controller->boxes()) {
    const Color& color = box->fillColor();
    colors.insert({color.red, color.green, color.blue});
    EXPECT_EQ(color.alpha, 1);
    if (color.whiteComponent() < 0.2) ++dark;
  }
  EXPECT_EQ(colors.size(), controller->boxes().size());
  EXPECT_GE(colors.size(), 10u);
  EXPECT_TRUE(colors.contains({1, 1, 1}));
  EXPECT_GE(dark, 1);
}

TEST_F(ColorSelectViewControllerTest, EveryBoxIsARoundSwatchWithALightGreyBorderOfOnePoint) {
  for (const auto& box : controller->boxes()) {
    EXPECT_EQ(box->frame().size.width, box->frame().size.height);
    EXPECT_EQ(box->cornerRadius(), box->frame().size.height / 2);
    EXPECT_EQ(box->borderColor(), Color::lightGray());
    EXPECT_EQ(box->borderWidth(), 1);
  }
}

TEST_F(ColorSelectViewControllerTest, AClickedButtonGivesTheFillColourOfItsBox) {
  const auto& box = *controller->boxes().at(3);
  controller->buttonClicked(buttonIn(box));
  EXPECT_EQ(selected, std::vector<Color>{box.fillColor()});
}

TEST_F(ColorSelectViewControllerTest, AButtonWithinTheBoxesFirstSubviewCountsToo) {
  const auto& box = *controller->boxes().at(5);
  const auto inner = std::make_shared<View>();
  buttonIn(box).addSubview(inner);
  controller->buttonClicked(*inner);
  EXPECT_EQ(selected, std::vector<Color>{box.fillColor()});
}

TEST_F(ColorSelectViewControllerTest, AViewThatIsInNoBoxGivesNothing) {
  const auto stranger = std::make_shared<View>();
  controller->buttonClicked(*stranger);
  // The box itself is not its button.
  controller->buttonClicked(*controller->boxes().at(0));
  EXPECT_TRUE(selected.empty());
}

TEST_F(ColorSelectViewControllerTest, APressAndAReleaseOnTheSwatchClickIt) {
  View& button = buttonIn(*controller->boxes().at(2));
  button.mouseDown({{5, 5}});
  button.mouseUp({{5, 5}});
  EXPECT_EQ(selected, std::vector<Color>{controller->boxes().at(2)->fillColor()});
}

TEST_F(ColorSelectViewControllerTest, TheKeyboardClicksAsWellAndEverySwatchHasAName) {
  std::set<std::string> names;
  const auto content = controller->content(Color::white(1));
  ASSERT_EQ(content.size(), controller->boxes().size());
  for (const HostedView& hosted : content) {
    names.insert(hosted.accessibleName);
    hosted.press();
  }
  EXPECT_EQ(names.size(), content.size());
  EXPECT_FALSE(names.contains(""));
  ASSERT_EQ(selected.size(), content.size());
  for (std::size_t index = 0; index < selected.size(); ++index)
    EXPECT_EQ(selected[index], controller->boxes()[index]->fillColor());
}

TEST_F(ColorSelectViewControllerTest, TheSwatchOfThePresentColourIsTheCurrentOne) {
  const auto content = controller->content(controller->boxes().at(6)->fillColor());
  for (std::size_t index = 0; index < content.size(); ++index)
    EXPECT_EQ(content[index].isCurrent, index == 6) << index;
  for (const HostedView& hosted : controller->content({0.1, 0.2, 0.3, 1}))
    EXPECT_FALSE(hosted.isCurrent);
}

TEST_F(ColorSelectViewControllerTest, AColourThatIsNotOfferedHasNoName) {
  EXPECT_EQ(ColorSelectViewController::nameOf(Color::white(1)), "White");
  EXPECT_EQ(ColorSelectViewController::nameOf({0.123, 0.4, 0.5, 1}), "");
}

TEST_F(ColorSelectViewControllerTest, AClickAfterItHasGoneDoesNothing) {
  const auto content = controller->content(Color::white(1));
  controller = nullptr;
  content.at(0).press();
  EXPECT_TRUE(selected.empty());
}

} // namespace
} // namespace orbel
