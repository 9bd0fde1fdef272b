#include "app/SettingsBindings.h"

#include "tests/doubles/FakeSettingsForm.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

using Names = std::vector<std::string>;

// A form with one box and one pop-up button, and the settings that they are tied to.
class SettingsBindingsTest : public testing::Test {
protected:
  SettingsFormDescription description() {
    SettingsControl box = m_bindings.checkBox(
        "box", "Box", [this] { return on; },
        [this](bool newOn) {
          on = newOn && !refuses;
          m_bindings.update(form);
        });
    SettingsControl button = m_bindings.popUpButton(
        "button", "Button", {{1, "One"}, {2, "Two"}}, [this] { return tag; },
        [this](std::int64_t newTag) {
          tag = newTag;
          m_bindings.update(form);
        });
    SettingsFormDescription result;
    result.groups = {{"Group", {{"", box}, {"Button:", button}}}};
    result.closeButton = {"close", SettingsText{}};
    return result;
  }
  void update() { m_bindings.update(form); }

  bool on = true;
  bool refuses = false;
  std::int64_t tag = 2;

private:
  SettingsBindings m_bindings;

protected:
  FakeSettingsForm form{description()};
};

TEST_F(SettingsBindingsTest, TheFirstUpdateShowsEverySettingAndTheNextOneNone) {
  update();
  EXPECT_TRUE(form.isOn("box"));
  EXPECT_EQ(form.selectedTag("button"), 2);
  form.received.clear();
  update();
  EXPECT_EQ(form.received, Names{});
}

TEST_F(SettingsBindingsTest, WhatTheUserChangesIsWrittenAndNotSentBack) {
  update();
  form.received.clear();
  form.click("box", false);
  form.choose("button", 1);
  EXPECT_FALSE(on);
  EXPECT_EQ(tag, 1);
  EXPECT_EQ(form.received, Names{});
}

TEST_F(SettingsBindingsTest, ASettingThatIsNotWhatTheUserChoseIsShown) {
  update();
  form.click("box", false);
  form.received.clear();
  refuses = true;
  form.click("box", true);
  EXPECT_FALSE(form.isOn("box"));
  EXPECT_EQ(form.received, Names{"box"});
}

TEST_F(SettingsBindingsTest, OnlyAChangedSettingIsSent) {
  update();
  form.choose("button", 1);
  form.received.clear();
  tag = 2;
  update();
  EXPECT_EQ(form.selectedTag("button"), 2);
  EXPECT_EQ(form.received, Names{"button"});
}

} // namespace
} // namespace orbel
