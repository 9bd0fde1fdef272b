#include "app/AppDelegate.h"

#include "settings/AppSettings.h"
#include "settings/Notifications.h"
#include "shortcut/MASShortcut.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace orbel {
namespace {

// As of a program that was installed to a place of its own.
constexpr const char* kAccessCommand = "sudo /opt/orbelmenu/bin/orbelmenu-touchpad-access";

class AppDelegateTest : public testing::Test {
protected:
  AppDelegateTest() {
    MASShortcut::setGlobalShortcut(MASShortcut::shortcutWithKeyCode(49, kControlFlag | kOptionFlag),
                                   "GlobalShortcut");
    platform.preferences.setObject("launchedBefore", true);
    platform.windows.movePointer({500, 500});
  }
  ~AppDelegateTest() override { delegate.applicationWillTerminate(); }

  void start() { delegate.applicationDidFinishLaunching(); }
  void pressShortcut() { platform.hotKeys.press(kSpaceKeyCode, kHotKeyControl | kHotKeyOption); }
  void gesture() {
    NotificationCenter::defaultCenter().post(kOrbelMenuShouldShowNotification, nullptr,
                                             {{kShowEventType, kShowEventTrackpad}});
  }
  void releaseButton() {
    if (platform.eventTaps.isEnabled("mouseUp")) platform.eventTaps.mouseUp();
  }
  void settle() { platform.runLoop.advance(0.2); }
  bool menuShown() { return !platform.windows.surfaces.empty() && platform.windows.surfaces[0]->shown; }
  Rect menuFrame() { return platform.windows.surfaces.at(0)->screenFrame; }

  FakePlatform platform;
  int terminations = 0;
  AppDelegate delegate{[this] { ++terminations; }, kAccessCommand};
};

TEST_F(AppDelegateTest, NothingIsShownAtTheStart) {
  start();
  settle();
  EXPECT_EQ(delegate.windowController(), nullptr);
  EXPECT_TRUE(platform.windows.surfaces.empty());
}

TEST_F(AppDelegateTest, WithoutTrustTheProgramLogsItAndCarriesOn) {
  platform.eventTaps.trusted = false;
  start();
  EXPECT_NE(std::find(platform.logged.begin(), platform.logged.end(), "we're not trusted"),
            platform.logged.end());
  pressShortcut();
  EXPECT_TRUE(menuShown());
}

TEST_F(AppDelegateTest, TheShortcutShowsTheMenuCentredOnThePointer) {
  start();
  pressShortcut();
  settle();
  EXPECT_EQ(menuFrame(), Rect(300, 300, 400, 400));
  EXPECT_TRUE(delegate.windowController()->windowVisible());
}

TEST_F(AppDelegateTest, TheShortcutPressedAgainOverTheOpenMenuHidesIt) {
  const auto editor = platform.workspace.launch(7, "Editor");
  platform.workspace.frontmost = editor;
  start();
  pressShortcut();
  settle();
  pressShortcut();
  settle();
  EXPECT_TRUE(platform.windows.surfaces.empty());
  EXPECT_EQ(editor->activations.size(), 1u);
}

TEST_F(AppDelegateTest, TheShortcutWithThePointerAwayMovesTheMenuToThePointer) {
  start();
  pressShortcut();
  settle();
  platform.windows.movePointer({1000, 700});
  pressShortcut();
  settle();
  EXPECT_EQ(menuFrame(), Rect(800, 500, 400, 400));
  EXPECT_TRUE(menuShown());
  EXPECT_EQ(platform.windows.surfaces.size(), 1u);
}

TEST_F(AppDelegateTest, AGestureShowsTheMenuAndDoesNothingOverAnOpenOne) {
  start();
  gesture();
  settle();
  EXPECT_TRUE(menuShown());
  gesture();
  settle();
  EXPECT_TRUE(menuShown());
}

TEST_F(AppDelegateTest, ARequestWhileTheMenuIsStillTransparentShowsItOnceMore) {
  start();
  pressShortcut();
  pressShortcut();
  settle();
  EXPECT_TRUE(menuShown());
}

TEST_F(AppDelegateTest, AClickElsewhereHidesAndOneOverTheMenuDoesNot) {
  start();
  pressShortcut();
  settle();
  releaseButton();
  settle();
  EXPECT_TRUE(menuShown());
  platform.windows.movePointer({10, 10});
  releaseButton();
  settle();
  EXPECT_TRUE(platform.windows.surfaces.empty());
}

TEST_F(AppDelegateTest, AClickElsewhereAlsoClosesAnOpenCollection) {
  platform.preferences.values["menuItems"] = PropertyList::List{PropertyList::Dictionary{
      {"class", "CollectionMenuItem"}, {"name", "Work"}, {"subitems", PropertyList::List{}}}};
  start();
  pressShortcut();
  settle();
  delegate.windowController()->didClickItem({0, 0});
  settle();
  platform.windows.movePointer({10, 10});
  releaseButton();
  settle();
  EXPECT_TRUE(platform.windows.surfaces.empty());
}

TEST_F(AppDelegateTest, AReleaseElsewhereBeforeTheMenuIsHalfVisibleDoesNotHideIt) {
  start();
  pressShortcut();
  platform.runLoop.advance(0.03);
  ASSERT_FALSE(delegate.windowController()->windowVisible());
  platform.windows.movePointer({10, 10});
  releaseButton();
  settle();
  ASSERT_TRUE(menuShown());
  EXPECT_EQ(platform.windows.surfaces[0]->windowAlpha, 1);
}

TEST_F(AppDelegateTest, AClickWithoutAMenuDoesNothing) {
  start();
  releaseButton();
  EXPECT_EQ(delegate.windowController(), nullptr);
}

TEST_F(AppDelegateTest, AfterTheMenuHasGoneTheNextShowBuildsAFreshController) {
  start();
  pressShortcut();
  settle();
  const std::weak_ptr<OrbelWindowController> first = delegate.windowController();
  pressShortcut();
  settle();
  EXPECT_EQ(delegate.windowController(), nullptr);
  EXPECT_TRUE(first.expired());
  pressShortcut();
  EXPECT_NE(delegate.windowController(), nullptr);
}

TEST_F(AppDelegateTest, TheDesktopsOwnRequestsShowAndHide) {
  start();
  delegate.showMenuAtPointer();
  settle();
  EXPECT_TRUE(menuShown());
  delegate.hideMenu();
  settle();
  EXPECT_TRUE(platform.windows.surfaces.empty());
  delegate.hideMenu();
}

TEST_F(AppDelegateTest, AtTheEndTheStoreIsWrittenAndTheCompanionToldWhereThereIsOne) {
  start();
  const int synchronizations = platform.preferences.synchronizations;
  delegate.applicationWillTerminate();
  EXPECT_EQ(platform.preferences.synchronizations, synchronizations + 1);
  EXPECT_TRUE(platform.workspace.actions.empty());
  platform.workspace.urlHandlers["orbelmenu-toolkit"] = "/toolkit.desktop";
  delegate.applicationWillTerminate();
  EXPECT_EQ(platform.workspace.actions, std::vector<std::string>{"openUrl orbelmenu-toolkit:terminate"});
}

TEST_F(AppDelegateTest, AnEndInTheMiddleOfAFadeLeavesNoWindowBehind) {
  start();
  pressShortcut();
  settle();
  pressShortcut();
  platform.runLoop.advance(0.05);
  delegate.applicationWillTerminate();
  EXPECT_TRUE(platform.windows.surfaces.empty());
}

TEST_F(AppDelegateTest, WhereTheDisplayTellsThePointerLaterTheMenuComesThen) {
  start();
  platform.windows.pointer = std::nullopt;
  pressShortcut();
  EXPECT_EQ(delegate.windowController(), nullptr);
  platform.windows.movePointer({600, 600});
  settle();
  EXPECT_EQ(menuFrame(), Rect(400, 400, 400, 400));
}

TEST_F(AppDelegateTest, OfSeveralSummonsThatWaitForThePointerTheLastOneShowsTheMenu) {
  start();
  platform.windows.pointer = std::nullopt;
  pressShortcut();
  pressShortcut();
  platform.windows.movePointer({600, 600});
  settle();
  EXPECT_TRUE(menuShown()) << "it is not toggled away by the answer to the other";
  EXPECT_EQ(platform.windows.surfaces[0]->timesShown, 1);
}

TEST_F(AppDelegateTest, WhereTheDisplayNeverTellsThePointerNothingIsShownAndTheNextSummonsCounts) {
  start();
  platform.windows.pointer = std::nullopt;
  pressShortcut();
  settle();
  EXPECT_TRUE(platform.windows.surfaces.empty());
  platform.windows.pointer = Point{600, 600};
  pressShortcut();
  settle();
  EXPECT_EQ(menuFrame(), Rect(400, 400, 400, 400));
}

TEST_F(AppDelegateTest, AGuessOfThePointersPlaceIsCorrectedOnce) {
  start();
  platform.windows.pointer = std::nullopt;
  pressShortcut();
  platform.windows.guessPointer({640, 512});
  settle();
  EXPECT_EQ(menuFrame(), Rect(440, 312, 400, 400));
  platform.windows.movePointer({500, 500});
  EXPECT_EQ(menuFrame(), Rect(300, 300, 400, 400));
  EXPECT_EQ(platform.windows.surfaces[0]->timesShown, 1);
  platform.windows.movePointer({600, 600});
  EXPECT_EQ(menuFrame(), Rect(300, 300, 400, 400));
}

TEST_F(AppDelegateTest, AMenuThatWasPressedStaysWhereItIs) {
  start();
  platform.windows.pointer = std::nullopt;
  pressShortcut();
  platform.windows.guessPointer({640, 512});
  settle();
  platform.windows.press(PointerButton::primary);
  platform.windows.movePointer({500, 500});
  EXPECT_EQ(menuFrame(), Rect(440, 312, 400, 400));
}

TEST_F(AppDelegateTest, ACorrectionBringsNoMenuBackThatWasHiddenMeanwhile) {
  start();
  for (const bool byEscape : {true, false}) {
    platform.windows.pointer = std::nullopt;
    pressShortcut();
    platform.windows.guessPointer({640, 512});
    settle();
    ASSERT_TRUE(menuShown());
    if (byEscape) platform.windows.pressEscape();
    if (!byEscape) delegate.hideMenu();
    platform.windows.movePointer({500, 500});
    EXPECT_EQ(menuFrame(), Rect(440, 312, 400, 400)) << "while it fades out";
    settle();
    EXPECT_TRUE(platform.windows.surfaces.empty());
  }
}

TEST_F(AppDelegateTest, ACorrectionOfASummonsThatHidTheMenuShowsNothing) {
  start();
  pressShortcut();
  settle();
  platform.windows.pointer = std::nullopt;
  pressShortcut();
  platform.windows.guessPointer({500, 500});
  platform.windows.movePointer({1000, 700});
  EXPECT_EQ(menuFrame(), Rect(300, 300, 400, 400));
  settle();
  EXPECT_TRUE(platform.windows.surfaces.empty());
}

TEST_F(AppDelegateTest, ACorrectionOfAGestureThatLeftTheMenuAloneDoesSoToo) {
  start();
  pressShortcut();
  settle();
  platform.windows.pointer = std::nullopt;
  gesture();
  platform.windows.guessPointer({500, 500});
  platform.windows.movePointer({1000, 700});
  settle();
  EXPECT_EQ(menuFrame(), Rect(300, 300, 400, 400));
}

TEST_F(AppDelegateTest, AHideWithdrawsTheSummonsThatWaits) {
  start();
  platform.windows.pointer = std::nullopt;
  pressShortcut();
  delegate.hideMenu();
  platform.windows.movePointer({600, 600});
  EXPECT_EQ(delegate.windowController(), nullptr);
}

TEST_F(AppDelegateTest, AClickElsewhereThatHidesTheMenuWithdrawsTheSummonsThatWouldMoveIt) {
  start();
  pressShortcut();
  settle();
  platform.windows.movePointer({10, 10});
  platform.windows.pointer = std::nullopt;
  gesture();
  releaseButton();
  platform.windows.movePointer({1000, 700});
  settle();
  EXPECT_TRUE(platform.windows.surfaces.empty());
}

TEST_F(AppDelegateTest, AReleaseDoesNotWithdrawASummonsWhileNoMenuIsVisible) {
  start();
  platform.windows.pointer = std::nullopt;
  pressShortcut();
  releaseButton();
  platform.windows.movePointer({600, 600});
  settle();
  EXPECT_TRUE(menuShown());
}

TEST_F(AppDelegateTest, AfterTheEndNoSummonsIsAnsweredAnyMore) {
  start();
  platform.windows.pointer = std::nullopt;
  pressShortcut();
  delegate.applicationWillTerminate();
  platform.windows.movePointer({600, 600});
  EXPECT_EQ(delegate.windowController(), nullptr);
  EXPECT_TRUE(platform.windows.surfaces.empty());
}

TEST_F(AppDelegateTest, TheSettingsWindowsControllerIsMadeAtTheStartAndItsWindowLater) {
  EXPECT_EQ(delegate.settingsWindowController(), nullptr);
  start();
  ASSERT_NE(delegate.settingsWindowController(), nullptr);
  EXPECT_EQ(platform.settingsFormFactory.loads, 0);
}

TEST_F(AppDelegateTest, TheDesktopsRequestOpensTheSettingsAsAClickOnTheStatusItemDoes) {
  delegate.openSettings();
  EXPECT_EQ(platform.settingsFormFactory.loads, 0);
  start();
  delegate.openSettings();
  EXPECT_EQ(platform.settingsFormFactory.last->managedWindow.happened,
            (std::vector<std::string>{"center", "makeKeyAndOrderFront"}));
}

TEST_F(AppDelegateTest, TheStatusItemShowsTheSettingsCentredAndWithTheKeyboard) {
  start();
  delegate.statusItemClicked();
  const auto& window = platform.settingsFormFactory.last->managedWindow;
  EXPECT_EQ(window.happened, (std::vector<std::string>{"center", "makeKeyAndOrderFront"}));
  delegate.statusItemClicked();
  EXPECT_EQ(platform.settingsFormFactory.loads, 1);
  EXPECT_EQ(window.happened.size(), 4u);
}

TEST_F(AppDelegateTest, QuitInTheSettingsEndsTheProgram) {
  start();
  delegate.statusItemClicked();
  platform.settingsFormFactory.last->press("quitButton");
  EXPECT_EQ(terminations, 1);
}

TEST_F(AppDelegateTest, TheSettingsAreGoneAfterTheEnd) {
  start();
  delegate.statusItemClicked();
  delegate.applicationWillTerminate();
  EXPECT_EQ(delegate.settingsWindowController(), nullptr);
  delegate.statusItemClicked();
}

// The start, in its order.

TEST_F(AppDelegateTest, TheFirstLaunchShowsTheSettingsCentredInFrontAndRemembersIt) {
  platform.preferences.removeObject("launchedBefore");
  start();
  ASSERT_EQ(platform.settingsFormFactory.loads, 1);
  EXPECT_EQ(platform.settingsFormFactory.last->managedWindow.happened,
            (std::vector<std::string>{"center", "makeKeyAndOrderFront"}));
  EXPECT_EQ(platform.preferences.values.at("launchedBefore"), PropertyList(true));
}

TEST_F(AppDelegateTest, TheFirstLaunchIsMarkedOnlyOnceTheSettingsAreShown) {
  platform.preferences.removeObject("launchedBefore");
  bool wasShownBeforeTheMark = false;
  const auto observation = platform.preferences.observeChanges([&] {
    if (platform.preferences.boolean("launchedBefore"))
      wasShownBeforeTheMark =
          platform.settingsFormFactory.last && platform.settingsFormFactory.last->managedWindow.visible;
  });
  start();
  EXPECT_TRUE(wasShownBeforeTheMark);
}

TEST_F(AppDelegateTest, ALaterLaunchShowsNothingButTheStatusItem) {
  start();
  EXPECT_EQ(platform.settingsFormFactory.loads, 0);
  EXPECT_EQ(platform.statusBar.items.size(), 1u);
}

TEST_F(AppDelegateTest, AMarkThatIsNoTrueBooleanIsAFirstLaunch) {
  for (const PropertyList& mark :
       {PropertyList(false), PropertyList("yes"), PropertyList(PropertyList::List{})}) {
    platform.preferences.setObject("launchedBefore", mark);
    AppDelegate other([] {}, kAccessCommand);
    other.applicationDidFinishLaunching();
    EXPECT_EQ(platform.preferences.values.at("launchedBefore"), PropertyList(true));
    other.applicationWillTerminate();
  }
}

TEST_F(AppDelegateTest, TheStatusItemIsTheTemplatePictureNamedSmall) {
  start();
  ASSERT_EQ(platform.statusBar.items.size(), 1u);
  EXPECT_EQ(platform.statusBar.items[0]->image, "small");
  EXPECT_TRUE(platform.statusBar.items[0]->isTemplate);
  EXPECT_EQ(platform.statusBar.items[0]->title, "Orbel Menu");
  EXPECT_NE(delegate.statusItem(), nullptr);
}

TEST_F(AppDelegateTest, AClickOnTheStatusItemShowsTheSettings) {
  start();
  platform.statusBar.items.at(0)->clicked();
  EXPECT_TRUE(platform.settingsFormFactory.last->managedWindow.visible);
}

TEST_F(AppDelegateTest, TheStatusItemIsGoneAfterTheEnd) {
  start();
  delegate.applicationWillTerminate();
  EXPECT_TRUE(platform.statusBar.items.empty());
  EXPECT_EQ(delegate.statusItem(), nullptr);
}

TEST_F(AppDelegateTest, RequestsAreAnsweredOnlyFromTheEndOfTheStartToTheEndOfTheProgram) {
  gesture();
  EXPECT_EQ(delegate.windowController(), nullptr);
  start();
  delegate.applicationWillTerminate();
  gesture();
  EXPECT_EQ(delegate.windowController(), nullptr);
}

TEST_F(AppDelegateTest, TheProgramsOwnCommandsAreTaken) {
  platform.text.translations["Quit"] = "Beenden";
  const std::uint64_t keyW = 13;
  const std::uint64_t keyQ = 12;
  EXPECT_FALSE(MASShortcut(keyQ, kControlFlag).isTaken());
  start();
  for (const std::uint64_t modifier : {kControlFlag, kCommandFlag}) {
    const std::string quit = MASShortcut(keyQ, modifier).isTaken().value_or("free");
    EXPECT_NE(quit.find("\u2018Beenden\u2019"), std::string::npos) << quit;
    const std::string close = MASShortcut(keyW, modifier).isTaken().value_or("free");
    EXPECT_NE(close.find("\u2018Close\u2019"), std::string::npos) << close;
    EXPECT_FALSE(MASShortcut(keyQ, modifier | kOptionFlag).isTaken());
  }
  EXPECT_FALSE(MASShortcut(keyQ, kOptionFlag).isTaken());
  EXPECT_FALSE(MASShortcut(kSpaceKeyCode, kControlFlag).isTaken());
  delegate.applicationWillTerminate();
  EXPECT_FALSE(MASShortcut(keyQ, kControlFlag).isTaken());
}

// Trust, and the touchpad that may not be read.

TEST_F(AppDelegateTest, ATrustedProgramLogsNothingAndTellsNobody) {
  start();
  EXPECT_TRUE(platform.logged.empty());
  EXPECT_TRUE(platform.userNotifications.delivered.empty());
}

TEST_F(AppDelegateTest, MissingTrustWithoutATouchpadIsOnlyLogged) {
  platform.eventTaps.trusted = false;
  start();
  EXPECT_TRUE(platform.userNotifications.delivered.empty());
}

TEST_F(AppDelegateTest, AnUnreadableTouchpadIsToldWithTheCommandThatGrantsAccess) {
  platform.eventTaps.trusted = false;
  platform.eventTaps.touchpadAccess = Failure{"Touchpad: permission denied"};
  platform.text.translations["Orbel Menu may not read the touchpad"] = "Titel";
  start();
  ASSERT_EQ(platform.userNotifications.delivered.size(), 1u);
  EXPECT_EQ(platform.userNotifications.delivered[0].title, "Titel");
  EXPECT_TRUE(platform.userNotifications.delivered[0].text.ends_with(std::string("\n") + kAccessCommand));
}

TEST_F(AppDelegateTest, TheUserIsToldOfTheTouchpadOnceEver) {
  platform.eventTaps.trusted = false;
  platform.eventTaps.touchpadAccess = Failure{"Touchpad: permission denied"};
  start();
  platform.userNotifications.answer({});
  AppDelegate second([] {}, kAccessCommand);
  second.applicationDidFinishLaunching();
  EXPECT_EQ(platform.userNotifications.delivered.size(), 1u);
  second.applicationWillTerminate();
}

TEST_F(AppDelegateTest, AMessageThatNobodyShowedIsTriedAgainAtTheNextStart) {
  platform.eventTaps.trusted = false;
  platform.eventTaps.touchpadAccess = Failure{"Touchpad: permission denied"};
  start();
  platform.logged.clear();
  platform.userNotifications.answer(Failure{"nobody shows messages"});
  EXPECT_EQ(platform.logged, std::vector<std::string>{"nobody shows messages"});
  AppDelegate second([] {}, kAccessCommand);
  second.applicationDidFinishLaunching();
  EXPECT_EQ(platform.userNotifications.delivered.size(), 2u);
  second.applicationWillTerminate();
}

} // namespace
} // namespace orbel
