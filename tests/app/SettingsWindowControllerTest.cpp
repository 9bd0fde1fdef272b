#include "app/SettingsWindowController.h"

#include "settings/AppSettings.h"
#include "settings/Notifications.h"
#include "settings/SettingsKeys.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace orbel {
namespace {

constexpr const char* kSwiftModeText =
    "When Swift Mode is active, every item in Orbel Menu is opened as soon as you move your mouse cursor "
    "over "
    "it. \n\nThis makes Orbel Menu a super fast App Switcher / Launcher.\n\nNote: To add items to Orbel Menu "
    "via Drag & Drop, please make sure Swift Mode is turned off.";

class SettingsWindowControllerTest : public testing::Test {
protected:
  ~SettingsWindowControllerTest() override { controller = nullptr; }
  using Values = std::map<std::string, SettingsValue>;

  FakeSettingsForm& form() {
    controller->window();
    return *platform.settingsFormFactory.last;
  }
  FakeSettingsForm& shown() {
    controller->showWindow();
    return *platform.settingsFormFactory.last;
  }
  AppSettings& settings() { return AppSettings::sharedInstance(); }
  static void click(View& view) {
    const Rect inWindow = view.convertToWindow(view.bounds());
    view.mouseDown({inWindow.center()});
    view.mouseUp({inWindow.center()});
  }
  std::vector<int> notifications(const std::vector<const char*>& names, const std::function<void()>& act) {
    std::vector<int> counts(names.size());
    std::vector<Registration> observations;
    for (std::size_t index = 0; index < names.size(); ++index) {
      observations.push_back(NotificationCenter::defaultCenter().observe(
          names[index], nullptr, [&counts, index](const Notification&) { ++counts[index]; }));
    }
    act();
    return counts;
  }

  FakePlatform platform;
  int terminations = 0;
  std::shared_ptr<SettingsWindowController> controller =
      SettingsWindowController::create([this] { ++terminations; });
};

TEST_F(SettingsWindowControllerTest, LoadsItsWindowOnceAndNotBeforeItIsWanted) {
  EXPECT_EQ(platform.settingsFormFactory.loads, 0);
  EXPECT_FALSE(controller->isWindowLoaded());
  shown();
  shown();
  EXPECT_EQ(platform.settingsFormFactory.loads, 1);
}

// The words beside or on a control.
std::string wordsOf(const SettingsRow& row) {
  if (!row.label.empty()) return row.label;
  return std::get<SettingsCheckBox>(row.control.kind).title;
}

TEST_F(SettingsWindowControllerTest, DescribesItsGroupsRowsAndTextsInOrder) {
  platform.text.translations["Behavior"] = "Verhalten";
  platform.text.translations["Version %@"] = "Fassung %@ hier";
  const SettingsFormDescription& description = form().description;
  EXPECT_EQ(description.windowTitle, "Settings");
  EXPECT_EQ(description.heading, "Orbel Menu");
  std::vector<std::string> words;
  for (const SettingsGroup& group : description.groups) {
    words.push_back(group.title);
    for (const SettingsRow& row : group.rows)
      words.push_back(wordsOf(row));
  }
  EXPECT_EQ(words,
            (std::vector<std::string>{"Open the menu", "&Shortcut:", "&Gesture:", "Appearance", "Menu si&ze:",
                                      "Menu &color:", "&Magnify items under the pointer", "Verhalten",
                                      "Show &running applications", "S&wift Mode", "&Launch at login"}));
  const std::string& version = form().control<SettingsText>("version").text;
  EXPECT_TRUE(version.starts_with("Fassung ") && version.ends_with(".0 hier")) << version;
  EXPECT_EQ(form().control<SettingsButton>("websiteButton").title, "orbelmenu.org");
  EXPECT_EQ(form().control<SettingsButton>("websiteButton").explanation, "Web site: orbelmenu.org");
}

TEST_F(SettingsWindowControllerTest, NoTwoControlsHaveTheSameIdentifier) {
  std::set<std::string> identifiers;
  for (const SettingsControl* control : form().controls())
    identifiers.insert(control->identifier);
  EXPECT_EQ(identifiers.size(), form().controls().size());
  EXPECT_EQ(identifiers.count(""), 0u);
}

TEST_F(SettingsWindowControllerTest, OffersEveryGestureAndMenuSizeByItsStoredNumber) {
  std::vector<std::int64_t> gestures;
  for (const auto& choice : form().control<SettingsPopUpButton>("gesturePopUpButton").choices) {
    gestures.push_back(choice.tag);
    EXPECT_FALSE(choice.title.empty());
  }
  std::sort(gestures.begin(), gestures.end());
  EXPECT_EQ(gestures, (std::vector<std::int64_t>{1, 2, 3, 4, 5}));
  const auto& menuSizes = form().control<SettingsPopUpButton>("menuSizePopUpButton").choices;
  ASSERT_EQ(menuSizes.size(), 3u);
  for (std::int64_t size = 1; size <= 3; ++size)
    EXPECT_EQ(menuSizes[static_cast<std::size_t>(size - 1)].tag, size);
}

TEST_F(SettingsWindowControllerTest, ShowsTheDefaultsOfAnEmptyStore) {
  EXPECT_EQ(shown().values, (Values{{"gesturePopUpButton", std::int64_t{1}},
                                    {"menuSizePopUpButton", std::int64_t{1}},
                                    {"magnifyCheckbox", true},
                                    {"showRunningAppsCheckbox", true},
                                    {"startOnLoginCheckbox", false},
                                    {"swiftModeCheckbox", false}}));
  EXPECT_EQ(controller->windowTintButtonView()->fillColor(), Color::white(1));
  EXPECT_TRUE(form().managedWindow.visible);
}

TEST_F(SettingsWindowControllerTest, ShowsWhatIsStored) {
  settings().setWindowTintColor({0.2, 0.4, 0.6, 1});
  platform.preferences.values.insert_or_assign(kGestureSettingsKey, 4);
  platform.preferences.values.insert_or_assign(kMenuSizeSettingsKey, 3);
  platform.preferences.values.insert_or_assign(kMagnifySettingsKey, false);
  platform.preferences.values.insert_or_assign(kShowRunningAppsKey, false);
  platform.preferences.values.insert_or_assign(kLaunchAtLoginKey, true);
  platform.preferences.values.insert_or_assign(kSwiftModeKey, true);
  EXPECT_EQ(shown().values, (Values{{"gesturePopUpButton", std::int64_t{4}},
                                    {"menuSizePopUpButton", std::int64_t{3}},
                                    {"magnifyCheckbox", false},
                                    {"showRunningAppsCheckbox", false},
                                    {"startOnLoginCheckbox", true},
                                    {"swiftModeCheckbox", true}}));
  EXPECT_EQ(controller->windowTintButtonView()->fillColor(), (Color{0.2, 0.4, 0.6, 1}));
}

TEST_F(SettingsWindowControllerTest, ShowsTheFirstOrTheDefaultForValuesThatMakeNoSense) {
  platform.preferences.values.insert_or_assign(kGestureSettingsKey, 6);
  platform.preferences.values.insert_or_assign(kMenuSizeSettingsKey, -3);
  platform.preferences.values.insert_or_assign(kWindowTintColorKey, PropertyList::Data(3));
  platform.preferences.values.insert_or_assign(kSwiftModeKey, true);
  shown();
  EXPECT_EQ(form().selectedTag("gesturePopUpButton"), 1);
  EXPECT_EQ(form().selectedTag("menuSizePopUpButton"), 1);
  EXPECT_TRUE(form().isOn("swiftModeCheckbox"));
  EXPECT_EQ(controller->windowTintButtonView()->fillColor(), Color::white(1));
  // What is stored is left alone.
  EXPECT_EQ(platform.preferences.integer(kGestureSettingsKey), 6);
}

TEST_F(SettingsWindowControllerTest, ValuesFromOutsideShowWhileTheWindowIsOpen) {
  shown();
  auto values = platform.preferences.values;
  values.insert_or_assign(kMenuSizeSettingsKey, 2);
  values.insert_or_assign(kSwiftModeKey, true);
  platform.preferences.changeFromOutside(values);
  EXPECT_EQ(form().selectedTag("menuSizePopUpButton"), 2);
  EXPECT_TRUE(form().isOn("swiftModeCheckbox"));
}

TEST_F(SettingsWindowControllerTest, ValuesFromOutsideShowWhenAClosedWindowIsShownAgain) {
  shown().managedWindow.close();
  form().received.clear();
  platform.preferences.changeFromOutside({{kMenuSizeSettingsKey, 3}, {kMagnifySettingsKey, false}});
  EXPECT_TRUE(form().received.empty());
  shown();
  EXPECT_EQ(form().selectedTag("menuSizePopUpButton"), 3);
  EXPECT_FALSE(form().isOn("magnifyCheckbox"));
}

TEST_F(SettingsWindowControllerTest, EveryControlWritesItsSettingAtOnce) {
  FakeSettingsForm& user = shown();
  user.choose("gesturePopUpButton", 3);
  user.choose("menuSizePopUpButton", 2);
  user.click("magnifyCheckbox", false);
  user.click("showRunningAppsCheckbox", false);
  user.click("swiftModeCheckbox", true);
  user.click("startOnLoginCheckbox", true);
  EXPECT_EQ(platform.preferences.integer(kGestureSettingsKey), 3);
  EXPECT_EQ(platform.preferences.integer(kMenuSizeSettingsKey), 2);
  EXPECT_FALSE(settings().magnifySettings());
  EXPECT_FALSE(settings().showRunningApps());
  EXPECT_TRUE(platform.preferences.boolean(kSwiftModeKey));
  EXPECT_TRUE(platform.preferences.boolean(kLaunchAtLoginKey));
  user.click("magnifyCheckbox", true);
  user.click("showRunningAppsCheckbox", true);
  user.click("swiftModeCheckbox", false);
  user.click("startOnLoginCheckbox", false);
  EXPECT_TRUE(settings().magnifySettings());
  EXPECT_TRUE(settings().showRunningApps());
  EXPECT_FALSE(settings().swiftMode());
  EXPECT_FALSE(settings().launchAtLogin());
}

TEST_F(SettingsWindowControllerTest, NoControlIsSentTheValueThatItHasJustSent) {
  FakeSettingsForm& user = shown();
  user.received.clear();
  user.choose("gesturePopUpButton", 3);
  user.choose("menuSizePopUpButton", 2);
  user.click("magnifyCheckbox", false);
  user.click("showRunningAppsCheckbox", false);
  user.click("swiftModeCheckbox", true);
  user.click("startOnLoginCheckbox", true);
  controller->didSelectColor({0, 0, 1, 1});
  EXPECT_EQ(user.received, std::vector<std::string>{});
}

TEST_F(SettingsWindowControllerTest, OnlyTheControlsWhoseSettingsHaveChangedAreSentAValue) {
  FakeSettingsForm& user = shown();
  user.click("magnifyCheckbox", false);
  user.received.clear();
  auto values = platform.preferences.values;
  values.insert_or_assign(kMagnifySettingsKey, true);
  values.insert_or_assign(kMenuSizeSettingsKey, 3);
  platform.preferences.changeFromOutside(values);
  EXPECT_EQ(user.received, (std::vector<std::string>{"menuSizePopUpButton", "magnifyCheckbox"}));
}

TEST_F(SettingsWindowControllerTest, ShownAgainItShowsTheSettingsWhateverTheControlsWereChangedTo) {
  shown().managedWindow.close();
  form().values.at("magnifyCheckbox") = false; // without saying so
  shown();
  EXPECT_TRUE(form().isOn("magnifyCheckbox"));
}

TEST_F(SettingsWindowControllerTest, OpenMenusHearOfEachChangeOnce) {
  FakeSettingsForm& user = shown();
  const auto counts = notifications(
      {kOrbelMenuMagnifySettingsChangedNotification, kOrbelMenuShowRunningAppsChangedNotification,
       kOrbelMenuMenuSizeSettingsChangedNotification, kOrbelMenuWindowTintSettingsChangedNotification},
      [&] {
        user.click("magnifyCheckbox", false);
        user.click("showRunningAppsCheckbox", false);
        user.choose("menuSizePopUpButton", 3);
        controller->didSelectColor({0, 0, 1, 1});
      });
  EXPECT_EQ(counts, (std::vector<int>{1, 1, 1, 1}));
}

TEST_F(SettingsWindowControllerTest, OnlyTheRestOfThreeFingersHasAHelpButton) {
  EXPECT_TRUE(shown().visible.at("helpButton"));
  for (std::int64_t gesture = 2; gesture <= 5; ++gesture) {
    form().choose("gesturePopUpButton", gesture);
    EXPECT_FALSE(form().visible.at("helpButton")) << gesture;
  }
  form().choose("gesturePopUpButton", 1);
  EXPECT_TRUE(form().visible.at("helpButton"));
}

TEST_F(SettingsWindowControllerTest, ChoosingAGestureEnablesItsTapAlone) {
  settings().startHandlers();
  shown().choose("gesturePopUpButton", 5);
  EXPECT_TRUE(platform.eventTaps.isEnabled("mouseMoved"));
  EXPECT_FALSE(platform.eventTaps.isEnabled("touch"));
  EXPECT_TRUE(platform.eventTaps.isEnabled("mouseUp"));
  form().choose("gesturePopUpButton", 2);
  EXPECT_FALSE(platform.eventTaps.isEnabled("mouseMoved"));
  EXPECT_TRUE(platform.eventTaps.isEnabled("touch"));
}

TEST_F(SettingsWindowControllerTest, TheRecorderIsInStepWithTheStoredShortcut) {
  const MASShortcut stored = MASShortcut::shortcutWithKeyCode(kSpaceKeyCode, kControlFlag | kOptionFlag);
  platform.preferences.setObject(kGlobalShortcutKey, stored.data());
  shown();
  EXPECT_EQ(controller->shortcutView()->shortcutValue(), stored);
  EXPECT_EQ(controller->shortcutView()->associatedUserDefaultsKey(), kGlobalShortcutKey);
  EXPECT_EQ(form().hosted("shortcutView").accessibleValue(), stored.description());
  controller->shortcutView()->setShortcutValue(std::nullopt);
  EXPECT_EQ(MASShortcut::shortcutWithData(platform.preferences.object(kGlobalShortcutKey)->data()),
            std::nullopt);
  EXPECT_EQ(form().hosted("shortcutView").accessibleValue(), "");
}

TEST_F(SettingsWindowControllerTest, TheRecordersToolTipsComeByPlace) {
  const HostedView& hosted = shown().hosted("shortcutView");
  EXPECT_EQ(hosted.toolTipAt({5, 5}), "");
  controller->shortcutView()->setShortcutValue(MASShortcut::shortcutWithKeyCode(96, 0));
  EXPECT_EQ(hosted.toolTipAt(controller->shortcutView()->shortcutArea().center()),
            "Click to record new shortcut");
  EXPECT_EQ(hosted.toolTipAt(controller->shortcutView()->hintArea().center()), "Delete shortcut");
}

TEST_F(SettingsWindowControllerTest, TheKeyboardStartsTheRecorder) {
  shown().hosted("shortcutView").press();
  EXPECT_TRUE(controller->shortcutView()->isRecording());
  EXPECT_TRUE(platform.keyRecorder.isRecording());
}

TEST_F(SettingsWindowControllerTest, TheShortcutOutlivesTheWindow) {
  const MASShortcut stored = MASShortcut::shortcutWithKeyCode(kSpaceKeyCode, kOptionFlag);
  platform.preferences.setObject(kGlobalShortcutKey, stored.data());
  shown();
  controller = nullptr;
  EXPECT_EQ(MASShortcut::shortcutWithData(platform.preferences.object(kGlobalShortcutKey)->data()), stored);
}

TEST_F(SettingsWindowControllerTest, TheCloseButtonIsDarkGreyAndClosesTheWindow) {
  shown();
  EXPECT_EQ(controller->closeButton()->defaultColor(), Color::darkGray());
  click(*controller->closeButton());
  EXPECT_FALSE(form().managedWindow.visible);
  shown();
  form().hosted("closeButton").press();
  EXPECT_FALSE(form().managedWindow.visible);
  EXPECT_EQ(terminations, 0);
}

TEST_F(SettingsWindowControllerTest, ACloseButtonThatOutlivesTheControllerDoesNothing) {
  const auto window = shown().sharedWindow;
  const auto before = window->happened;
  const auto button = controller->closeButton();
  controller = nullptr;
  click(*button);
  EXPECT_TRUE(window->visible);
  EXPECT_EQ(window->happened, before);
  EXPECT_EQ(terminations, 0);
}

TEST_F(SettingsWindowControllerTest, OnADarkDesktopTheCloseButtonCanBeSeen) {
  shown();
  form().managedWindow.changeColorScheme(ColorScheme::dark);
  EXPECT_EQ(controller->closeButton()->defaultColor(), Color::lightGray());
  form().managedWindow.changeColorScheme(ColorScheme::light);
  EXPECT_EQ(controller->closeButton()->defaultColor(), Color::darkGray());
}

TEST_F(SettingsWindowControllerTest, TheTintSwatchIsADiscWithALightGreyBorder) {
  shown();
  const SwatchView& swatch = *controller->windowTintButtonView();
  EXPECT_EQ(swatch.cornerRadius(), swatch.frame().size.height / 2);
  EXPECT_EQ(swatch.frame().size.width, swatch.frame().size.height);
  EXPECT_EQ(swatch.borderColor(), Color::lightGray());
  EXPECT_EQ(swatch.borderWidth(), 1);
}

TEST_F(SettingsWindowControllerTest, TheTintSwatchOpensTheColoursBesideIt) {
  shown();
  View& button = *form().hosted("windowTintButtonView").view->subviews().back();
  click(button);
  ASSERT_NE(controller->currentPopover(), nullptr);
  auto& popover = static_cast<FakePopover&>(*controller->currentPopover());
  EXPECT_EQ(popover.beside, "windowTintButtonView");
  EXPECT_GE(popover.content.size(), 10u);
}

TEST_F(SettingsWindowControllerTest, AChosenColourIsStoredShownAndClosesThePopover) {
  shown().hosted("windowTintButtonView").press();
  const auto content = static_cast<FakePopover&>(*controller->currentPopover()).content;
  const auto counts =
      notifications({kOrbelMenuWindowTintSettingsChangedNotification}, [&] { content.at(4).press(); });
  EXPECT_EQ(counts[0], 1);
  EXPECT_EQ(controller->currentPopover(), nullptr);
  const Color chosen = static_cast<SwatchView&>(*content.at(4).view).fillColor();
  EXPECT_EQ(settings().windowTintColor(), chosen);
  EXPECT_EQ(controller->windowTintButtonView()->fillColor(), chosen);
  EXPECT_EQ(form().hosted("windowTintButtonView").accessibleValue(), content.at(4).accessibleName);
}

TEST_F(SettingsWindowControllerTest, AClickElsewhereClosesTheColoursAndChangesNothing) {
  shown().hosted("windowTintButtonView").press();
  const int writes = platform.preferences.writes;
  controller->currentPopover()->close();
  EXPECT_EQ(controller->currentPopover(), nullptr);
  EXPECT_EQ(platform.preferences.writes, writes);
  form().hosted("windowTintButtonView").press();
  EXPECT_NE(controller->currentPopover(), nullptr);
}

TEST_F(SettingsWindowControllerTest, TheHelpVideoIsLoadedOnlyWhenItIsOpened) {
  shown();
  EXPECT_TRUE(platform.videoPlayerFactory.loaded.empty());
  form().press("helpButton");
  EXPECT_EQ(platform.videoPlayerFactory.loaded, std::vector<std::string>{"ThreeFingerRest.mp4"});
  EXPECT_EQ(platform.videoPlayerFactory.happened, (std::vector<std::string>{"seekToStart", "play"}));
  const auto& popover = static_cast<FakePopover&>(controller->threeFingerRestPopover());
  EXPECT_EQ(popover.beside, "helpButton");
  ASSERT_EQ(popover.content.size(), 1u);
  EXPECT_EQ(popover.content[0].view->frame().size, Size(282, 360));
}

TEST_F(SettingsWindowControllerTest, TheHelpVideoStartsAgainAtItsEndWhileItIsOpen) {
  shown().press("helpButton");
  platform.videoPlayerFactory.happened.clear();
  platform.videoPlayerFactory.handlers.didPlayToEnd();
  EXPECT_EQ(platform.videoPlayerFactory.happened, (std::vector<std::string>{"seekToStart", "play"}));
  platform.videoPlayerFactory.handlers.didPlayToEnd();
  EXPECT_EQ(platform.videoPlayerFactory.happened.size(), 4u);
}

TEST_F(SettingsWindowControllerTest, TheHelpVideoIsLetGoWhenItsPopoverCloses) {
  shown().press("helpButton");
  EXPECT_EQ(platform.videoPlayerFactory.alive, 1);
  controller->threeFingerRestPopover().close();
  EXPECT_EQ(platform.videoPlayerFactory.alive, 0);
  EXPECT_EQ(controller->threeFingerRestPlayer(), nullptr);
  EXPECT_TRUE(static_cast<FakePopover&>(controller->threeFingerRestPopover()).content.empty());
  platform.videoPlayerFactory.happened.clear();
  platform.videoPlayerFactory.handlers.didPlayToEnd();
  EXPECT_TRUE(platform.videoPlayerFactory.happened.empty());
  // And again from the start.
  form().press("helpButton");
  EXPECT_EQ(platform.videoPlayerFactory.alive, 1);
}

TEST_F(SettingsWindowControllerTest, FramesOfTheHelpVideoReplaceTheStillPicture) {
  shown().press("helpButton");
  const auto& popover = static_cast<FakePopover&>(controller->threeFingerRestPopover());
  const auto view = std::dynamic_pointer_cast<BezelView>(popover.content.at(0).view);
  ASSERT_NE(view, nullptr);
  ASSERT_NE(view->image(), nullptr);
  EXPECT_EQ(view->image(), platform.videoPlayerFactory.lastStill);
  EXPECT_EQ(view->image()->size(), Size(282, 360));
  const auto frame = Image::withBitmap({2, 2}, Bitmap(2, 2));
  platform.videoPlayerFactory.handlers.frameReady(frame);
  EXPECT_EQ(view->image(), frame);
}

TEST_F(SettingsWindowControllerTest, WithoutAPlayerTheHelpIsAStillPicture) {
  platform.videoPlayerFactory.loadSucceeds = false;
  shown().press("helpButton");
  EXPECT_EQ(platform.logged, std::vector<std::string>{"the video ThreeFingerRest.mp4 cannot be played"});
  const auto& popover = static_cast<FakePopover&>(controller->threeFingerRestPopover());
  EXPECT_TRUE(popover.isShown());
  const auto view = std::dynamic_pointer_cast<BezelView>(popover.content.at(0).view);
  ASSERT_NE(view, nullptr);
  ASSERT_NE(view->image(), nullptr);
  EXPECT_EQ(view->image(), platform.videoPlayerFactory.lastStill);
  EXPECT_EQ(view->image()->size(), Size(282, 360));
  EXPECT_EQ(controller->threeFingerRestPlayer(), nullptr);
}

TEST_F(SettingsWindowControllerTest, SwiftModeIsExplainedInAnAlert) {
  shown().press("swiftModeInfoButton");
  ASSERT_TRUE(platform.dialogs.alert);
  EXPECT_EQ(platform.dialogs.owner, nullptr);
  EXPECT_EQ(platform.dialogs.alert->message, kSwiftModeText);
  EXPECT_EQ(platform.dialogs.alert->button, "OK");
  platform.dialogs.closeAlert();
}

// A store that will not keep the wish to be started at login, as one whose registration fails.
class RefusingLoginTest : public SettingsWindowControllerTest {
protected:
  RefusingLoginTest() {
    m_refusal = platform.preferences.observeChanges([this] {
      if (platform.preferences.boolean(kLaunchAtLoginKey))
        platform.preferences.values.insert_or_assign(kLaunchAtLoginKey, false);
    });
  }

private:
  Registration m_refusal;
};

TEST_F(RefusingLoginTest, ABoxThatReadsBackAsOffShowsTheAlert) {
  shown().click("startOnLoginCheckbox", true);
  ASSERT_TRUE(platform.dialogs.alert);
  EXPECT_EQ(platform.dialogs.alert->message,
            "To enable Launch at Login please make sure that the Orbel Menu App Bundle is located in your "
            "default Applications directory.");
  EXPECT_FALSE(form().isOn("startOnLoginCheckbox"));
}

TEST_F(RefusingLoginTest, TheRefusedBoxAloneIsSetBackAndOnce) {
  FakeSettingsForm& user = shown();
  user.received.clear();
  user.click("startOnLoginCheckbox", true);
  EXPECT_EQ(user.received, std::vector<std::string>{"startOnLoginCheckbox"});
}

TEST_F(RefusingLoginTest, SwitchingTheBoxOffShowsNone) {
  shown().click("startOnLoginCheckbox", false);
  EXPECT_FALSE(platform.dialogs.alert);
}

TEST_F(SettingsWindowControllerTest, ABoxThatStaysOnShowsNoAlert) {
  shown().click("startOnLoginCheckbox", true);
  EXPECT_FALSE(platform.dialogs.alert);
  EXPECT_TRUE(form().isOn("startOnLoginCheckbox"));
}

TEST_F(SettingsWindowControllerTest, TheWebSiteOpensInTheBrowser) {
  shown().press("websiteButton");
  EXPECT_EQ(platform.workspace.actions, std::vector<std::string>{"openUrl https://orbelmenu.org"});
  EXPECT_EQ(platform.logged, std::vector<std::string>{"cannot openUrl https://orbelmenu.org"})
      << "there is no browser";
}

TEST_F(SettingsWindowControllerTest, EscapeAndControlOrSuperWCloseTheWindow) {
  for (const auto& [key, modifiers] : std::vector<std::pair<std::string, std::uint64_t>>{
           {kEscapeKeyEquivalent, 0}, {"w", kControlFlag}, {"w", kCommandFlag}}) {
    shown().pressKey(key, modifiers);
    EXPECT_FALSE(form().managedWindow.visible) << modifiers;
  }
  EXPECT_EQ(terminations, 0);
}

TEST_F(SettingsWindowControllerTest, ControlOrSuperQQuits) {
  shown().pressKey("q", kControlFlag);
  shown().pressKey("q", kCommandFlag);
  EXPECT_EQ(terminations, 2);
  EXPECT_EQ(form().description.keys.size(), 5u);
}

TEST_F(SettingsWindowControllerTest, QuitEndsTheProgram) {
  shown().press("quitButton");
  EXPECT_EQ(terminations, 1);
}

} // namespace
} // namespace orbel
