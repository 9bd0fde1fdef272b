// What every TopLevelWindows keeps to.
//
// Subject: a screen without windows, and other programs. Each action returns when the windows know of it.
//   common::TopLevelWindows& windows();
//   std::uint64_t open(const std::string& className);  a program of its own opens an ordinary window
//   void close(std::uint64_t window);                  its program ends
//   std::int32_t processOf(std::uint64_t window);
//   bool becomesActive(std::uint64_t window);  true as soon as it is, false when that does not happen
#pragma once

#include "backends/common/TopLevelWindows.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orbel::contracts {

template <class Subject>
class TopLevelWindowsContract : public testing::Test {
protected:
  std::vector<std::uint64_t> listed() {
    std::vector<std::uint64_t> all;
    for (const common::TopLevelWindow& window : subject.windows().windows())
      all.push_back(window.id);
    return all;
  }
  Subject subject;
};

TYPED_TEST_SUITE_P(TopLevelWindowsContract);

TYPED_TEST_P(TopLevelWindowsContract, WindowsAreListedInTheOrderOfOpeningWithWhatIdentifiesThem) {
  EXPECT_TRUE(this->listed().empty());
  const auto first = this->subject.open("Editor");
  const auto second = this->subject.open("Viewer");
  ASSERT_EQ(this->listed(), (std::vector<std::uint64_t>{first, second}));
  const common::TopLevelWindow window = this->subject.windows().windows().at(1);
  EXPECT_EQ(window.className, "Viewer");
  EXPECT_EQ(window.processIdentifier, this->subject.processOf(second));
  EXPECT_TRUE(window.isNormal);
}

TYPED_TEST_P(TopLevelWindowsContract, AClosedWindowIsNotListed) {
  const auto first = this->subject.open("Editor");
  const auto second = this->subject.open("Viewer");
  this->subject.close(first);
  EXPECT_EQ(this->listed(), std::vector<std::uint64_t>{second});
}

TYPED_TEST_P(TopLevelWindowsContract, ComingAndGoingIsToldUntilTheObservationEnds) {
  int changes = 0;
  auto observation = this->subject.windows().observeChanges([&] { ++changes; });
  const auto window = this->subject.open("Editor");
  EXPECT_GE(changes, 1);
  changes = 0;
  this->subject.close(window);
  EXPECT_GE(changes, 1);
  observation.reset();
  changes = 0;
  this->subject.open("Viewer");
  EXPECT_EQ(changes, 0);
}

TYPED_TEST_P(TopLevelWindowsContract, AWindowThatIsActivatedBecomesActive) {
  const auto first = this->subject.open("Editor");
  const auto second = this->subject.open("Viewer");
  for (const auto window : {first, second}) {
    EXPECT_TRUE(this->subject.windows().activate(window));
    EXPECT_TRUE(this->subject.becomesActive(window));
  }
}

TYPED_TEST_P(TopLevelWindowsContract, AWindowThatIsGoneCannotBeActivated) {
  const auto window = this->subject.open("Editor");
  this->subject.close(window);
  EXPECT_FALSE(this->subject.windows().activate(window));
}

TYPED_TEST_P(TopLevelWindowsContract, RestoringGivesTheFocusBackToWhatWasActiveAtTheMark) {
  const auto first = this->subject.open("Editor");
  ASSERT_TRUE(this->subject.windows().activate(first));
  ASSERT_TRUE(this->subject.becomesActive(first));
  const auto mark = this->subject.windows().summonMark();
  const auto second = this->subject.open("Viewer");
  ASSERT_TRUE(this->subject.windows().activate(second));
  ASSERT_TRUE(this->subject.becomesActive(second));
  EXPECT_TRUE(this->subject.windows().restore(first, mark));
  EXPECT_TRUE(this->subject.becomesActive(first));
}

TYPED_TEST_P(TopLevelWindowsContract, AWindowThatIsNotThereHasNoIcon) {
  EXPECT_TRUE(this->subject.windows().icon(0x7FFFFFF, 32).isEmpty());
}

TYPED_TEST_P(TopLevelWindowsContract, StartupIdentifiersDiffer) {
  const std::string first = this->subject.windows().makeStartupId("org.example.App.desktop");
  EXPECT_NE(first, "");
  EXPECT_NE(first, this->subject.windows().makeStartupId("org.example.App.desktop"));
}

REGISTER_TYPED_TEST_SUITE_P(TopLevelWindowsContract,
                            WindowsAreListedInTheOrderOfOpeningWithWhatIdentifiesThem,
                            AClosedWindowIsNotListed, ComingAndGoingIsToldUntilTheObservationEnds,
                            AWindowThatIsActivatedBecomesActive, AWindowThatIsGoneCannotBeActivated,
                            RestoringGivesTheFocusBackToWhatWasActiveAtTheMark,
                            AWindowThatIsNotThereHasNoIcon, StartupIdentifiersDiffer);

} // namespace orbel::contracts
