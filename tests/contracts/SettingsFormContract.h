// What every SettingsForm and its popovers keep to.
//
// Subject: the forms of a program, and a user. Names are identifiers, which are also the controls' titles or
// accessible names. All but forms() are about the form that is given, which is shown.
//   SettingsFormFactory& forms();
//   void click(SettingsForm& form, const std::string& name);   a check box or a button
//   void choose(SettingsForm& form, const std::string& name, std::size_t index);  an entry of a pop-up button
//   bool isOn(SettingsForm& form, const std::string& name);
//   std::int64_t selectedTag(SettingsForm& form, const std::string& name);
//   bool isVisible(SettingsForm& form, const std::string& name);  of a button
#pragma once

#include "platform/SettingsForm.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orbel::contracts {

template <class Subject>
class SettingsFormContract : public testing::Test {
protected:
  static HostedView square(const std::string& name) {
    return {.view = std::make_shared<View>(Rect{0, 0, 20, 20}), .accessibleName = name};
  }
  SettingsFormDescription description() {
    const SettingsPopUpButton size{"Size", {{7, "Small"}, {3, "Large"}}, [this](std::int64_t tag) {
                                     // The form shows it already.
                                     EXPECT_EQ(subject.selectedTag(*form, "Size"), tag);
                                     done.push_back("Size " + std::to_string(tag));
                                   }};
    const SettingsCheckBox grow{"Grow", [this](bool on) {
                                  EXPECT_EQ(subject.isOn(*form, "Grow"), on);
                                  done.push_back(on ? "Grow on" : "Grow off");
                                }};
    return {.windowTitle = "Settings",
            .heading = "Program",
            .groups = {{"Group", {{"Size:", {"Size", size}}, {"", {"Grow", grow}, button("Help")}}}},
            .footerAtLeft = {{"Version", SettingsText{"Version 1"}}},
            .footerAtRight = {button("Quit")},
            .closeButton = {"Close", square("Close")},
            .keys = {}};
  }
  void load() { form = subject.forms().load(description()); }
  void loadAndShow() {
    load();
    form->window().makeKeyAndOrderFront();
  }
  std::unique_ptr<Popover> showPopover() {
    auto popover = form->makePopover([this] { ++closings; });
    popover->setContent({square("a"), square("b")}, 2);
    popover->show("Help");
    return popover;
  }

  Subject subject;
  std::unique_ptr<SettingsForm> form;
  std::vector<std::string> done; // by the user
  int closings = 0;              // of popovers

private:
  SettingsControl button(const std::string& name) {
    return {name, SettingsButton{.title = name, .pressed = [this, name] { done.push_back(name); }}};
  }
};

TYPED_TEST_SUITE_P(SettingsFormContract);

TYPED_TEST_P(SettingsFormContract, AFormIsLoadedHiddenAndShowsTheFirstValues) {
  this->load();
  ASSERT_TRUE(this->form);
  EXPECT_FALSE(this->form->window().isVisible());
  EXPECT_FALSE(this->subject.isOn(*this->form, "Grow"));
  EXPECT_EQ(this->subject.selectedTag(*this->form, "Size"), 7);
}

TYPED_TEST_P(SettingsFormContract, ValuesAreShownAndCallNothing) {
  this->loadAndShow();
  this->form->setValue("Grow", true);
  this->form->setValue("Size", std::int64_t{3});
  EXPECT_TRUE(this->subject.isOn(*this->form, "Grow"));
  EXPECT_EQ(this->subject.selectedTag(*this->form, "Size"), 3);
  this->form->setValue("Grow", false);
  EXPECT_FALSE(this->subject.isOn(*this->form, "Grow"));
  EXPECT_TRUE(this->done.empty());
}

TYPED_TEST_P(SettingsFormContract, TheUsersActionsAreToldWithWhatTheFormShowsThen) {
  this->loadAndShow();
  this->subject.click(*this->form, "Grow");
  this->subject.choose(*this->form, "Size", 1);
  this->subject.click(*this->form, "Grow");
  this->subject.click(*this->form, "Help");
  this->subject.click(*this->form, "Quit");
  EXPECT_EQ(this->done, (std::vector<std::string>{"Grow on", "Size 3", "Grow off", "Help", "Quit"}));
}

TYPED_TEST_P(SettingsFormContract, AControlIsVisibleUnlessItIsHidden) {
  this->loadAndShow();
  EXPECT_TRUE(this->subject.isVisible(*this->form, "Help"));
  this->form->setVisible("Help", false);
  EXPECT_FALSE(this->subject.isVisible(*this->form, "Help"));
  EXPECT_TRUE(this->subject.isVisible(*this->form, "Quit"));
  this->form->setVisible("Help", true);
  EXPECT_TRUE(this->subject.isVisible(*this->form, "Help"));
}

TYPED_TEST_P(SettingsFormContract, AClosedWindowCanBeShownAgainWithItsValues) {
  this->loadAndShow();
  EXPECT_TRUE(this->form->window().isVisible());
  this->subject.click(*this->form, "Grow");
  this->form->window().close();
  EXPECT_FALSE(this->form->window().isVisible());
  this->form->window().makeKeyAndOrderFront();
  EXPECT_TRUE(this->form->window().isVisible());
  EXPECT_TRUE(this->subject.isOn(*this->form, "Grow"));
}

TYPED_TEST_P(SettingsFormContract, APopoverTellsOnceThatItHasClosed) {
  this->loadAndShow();
  const auto popover = this->showPopover();
  EXPECT_TRUE(popover->isShown());
  EXPECT_EQ(this->closings, 0);
  popover->close();
  popover->close();
  EXPECT_FALSE(popover->isShown());
  EXPECT_EQ(this->closings, 1);
  popover->show("Help");
  EXPECT_TRUE(popover->isShown());
}

TYPED_TEST_P(SettingsFormContract, APopoverClosesWithItsWindow) {
  this->loadAndShow();
  const auto popover = this->showPopover();
  this->form->window().close();
  EXPECT_FALSE(popover->isShown());
  EXPECT_EQ(this->closings, 1);
}

TYPED_TEST_P(SettingsFormContract, APopoverThatIsDestroyedTellsNothing) {
  this->loadAndShow();
  this->showPopover().reset();
  EXPECT_EQ(this->closings, 0);
}

TYPED_TEST_P(SettingsFormContract, APopoverMayEndAsItCloses) {
  this->loadAndShow();
  std::unique_ptr<Popover> popover;
  popover = this->form->makePopover([&] { popover.reset(); });
  popover->setContent({this->square("a")}, 1);
  popover->show("Help");
  popover->close();
  EXPECT_FALSE(popover);
}

REGISTER_TYPED_TEST_SUITE_P(SettingsFormContract, AFormIsLoadedHiddenAndShowsTheFirstValues,
                            ValuesAreShownAndCallNothing, TheUsersActionsAreToldWithWhatTheFormShowsThen,
                            AControlIsVisibleUnlessItIsHidden, AClosedWindowCanBeShownAgainWithItsValues,
                            APopoverTellsOnceThatItHasClosed, APopoverClosesWithItsWindow,
                            APopoverThatIsDestroyedTellsNothing, APopoverMayEndAsItCloses);

} // namespace orbel::contracts
