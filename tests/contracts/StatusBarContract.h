// What every StatusBar keeps to.
//
// Subject: a desktop, without a status area at the start, and a user.
//   StatusBar& bar();
//   void addStatusArea();
//   void removeStatusArea();
//   bool shows(std::size_t icons);  true as soon as that many are shown, false when that does not happen
//   std::string title();            of the icon that is shown
//   bool click(std::function<bool()> cameOfIt);  on the icon that is shown; true as soon as that has come of it
#pragma once

#include "platform/StatusBar.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace orbel::contracts {

template <class Subject>
class StatusBarContract : public testing::Test {
protected:
  void TearDown() override { item.reset(); }
  void makeItem() {
    item = subject.bar().makeStatusItem(
        {.image = "small", .isTemplate = true, .title = "Orbel Menu", .clicked = [this] {
           ++clicks;
           if (endsAtClick) item.reset();
         }});
    ASSERT_TRUE(item);
  }
  Subject subject;
  std::unique_ptr<StatusItem> item;
  int clicks = 0;
  bool endsAtClick = false;
};

TYPED_TEST_SUITE_P(StatusBarContract);

TYPED_TEST_P(StatusBarContract, AnItemIsShownAsLongAsItLives) {
  this->subject.addStatusArea();
  this->makeItem();
  EXPECT_TRUE(this->subject.shows(1));
  EXPECT_EQ(this->subject.title(), "Orbel Menu");
  this->item.reset();
  EXPECT_TRUE(this->subject.shows(0));
}

TYPED_TEST_P(StatusBarContract, EveryClickIsTold) {
  this->subject.addStatusArea();
  this->makeItem();
  ASSERT_TRUE(this->subject.shows(1));
  EXPECT_EQ(this->clicks, 0);
  for (int number = 1; number <= 2; ++number)
    EXPECT_TRUE(this->subject.click([&] { return this->clicks == number; }));
}

TYPED_TEST_P(StatusBarContract, AClickMayEndTheItem) {
  this->subject.addStatusArea();
  this->endsAtClick = true;
  this->makeItem();
  ASSERT_TRUE(this->subject.shows(1));
  EXPECT_TRUE(this->subject.click([&] { return this->clicks == 1; }));
  EXPECT_TRUE(this->subject.shows(0));
}

TYPED_TEST_P(StatusBarContract, AStatusAreaThatComesLaterOrComesBackGetsTheItem) {
  this->makeItem();
  for (int number = 1; number <= 2; ++number) {
    this->subject.addStatusArea();
    ASSERT_TRUE(this->subject.shows(1)) << number;
    EXPECT_TRUE(this->subject.click([&] { return this->clicks == number; }));
    this->subject.removeStatusArea();
  }
}

TYPED_TEST_P(StatusBarContract, AnItemThatHasEndedComesToNoStatusArea) {
  this->makeItem();
  this->item.reset();
  this->subject.addStatusArea();
  const auto other =
      this->subject.bar().makeStatusItem({.image = "small", .title = "Other", .clicked = [] {}});
  ASSERT_TRUE(this->subject.shows(1));
  EXPECT_EQ(this->subject.title(), "Other");
}

REGISTER_TYPED_TEST_SUITE_P(StatusBarContract, AnItemIsShownAsLongAsItLives, EveryClickIsTold,
                            AClickMayEndTheItem, AStatusAreaThatComesLaterOrComesBackGetsTheItem,
                            AnItemThatHasEndedComesToNoStatusArea);

} // namespace orbel::contracts
