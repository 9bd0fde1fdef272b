#include "tests/controllers/ControllerFixture.h"

#include "foundation/NotificationCenter.h"
#include "settings/Notifications.h"

namespace orbel {
namespace {

class OrbelWindowControllerTest : public ControllerTest {
protected:
  FakeSurface& surface() { return *platform.windows.surfaces.at(0); }
};

TEST_F(OrbelWindowControllerTest, IsMadeTransparentAndOffTheScreenWithoutItems) {
  EXPECT_EQ(controller().window().alphaValue(), 0);
  EXPECT_FALSE(controller().window().isShown());
  EXPECT_TRUE(controller().menuItems().empty());
  EXPECT_EQ(controller().closeButton().frame(), Rect(185, 185, 30, 30));
}

TEST_F(OrbelWindowControllerTest, TheCompanionIsStartedAheadOnlyWhereSomethingOpensItsUrls) {
  controller();
  platform.runLoop.runDue();
  EXPECT_TRUE(platform.workspace.actions.empty());
  platform.workspace.urlHandlers["orbelmenu-toolkit"] = "/toolkit.desktop";
  const auto other = OrbelWindowController::create();
  platform.runLoop.runDue();
  EXPECT_EQ(platform.workspace.actions, Names{"openUrl orbelmenu-toolkit:"});
  EXPECT_TRUE(other->toolkitAvailable());
}

TEST_F(OrbelWindowControllerTest, ShowsASquareCentredOnThePointAndFadesIn) {
  shown();
  EXPECT_EQ(controller().window().frame(), Rect(300, 300, 400, 400));
  EXPECT_TRUE(surface().shown);
  EXPECT_EQ(controller().window().alphaValue(), 1);
  EXPECT_TRUE(controller().windowVisible());
}

TEST_F(OrbelWindowControllerTest, TheMenuSizesAre400And500And600) {
  const std::pair<int, double> sizes[] = {{1, 400}, {2, 500}, {3, 600}};
  for (const auto& [setting, side] : sizes) {
    platform.preferences.values["menuSizeSettings"] = setting;
    controller().showWindowAtScreenPosition({500, 500});
    EXPECT_EQ(controller().window().frame(), Rect::centeredAt({500, 500}, side));
    EXPECT_EQ(controller().closeButton().frame(), Rect(side / 2 - 15, side / 2 - 15, 30, 30));
    EXPECT_EQ(controller().orbelView().frame(), Rect(0, 0, side, side));
  }
}

TEST_F(OrbelWindowControllerTest, OnFirstUseTheSixDefaultsAppearAndNothingIsStoredYet) {
  shown();
  EXPECT_EQ(names(), (Names{"Finder", "Launchpad", "App Store", "iTunes", "Safari", "Mail"}));
  EXPECT_FALSE(platform.preferences.values.contains("menuItems"));
}

TEST_F(OrbelWindowControllerTest, AStoredEmptyListYieldsTheDefaultsAsWell) {
  store({});
  shown();
  EXPECT_EQ(controller().menuItems().size(), 6u);
  EXPECT_TRUE(platform.preferences.values["menuItems"].list()->empty());
}

TEST_F(OrbelWindowControllerTest, AnElementThatCannotBeReadIsLeftOutAndDroppedFromTheStoreAfterACopyWasKept) {
  store({storedCore("Finder"), PropertyList::Dictionary{{"class", "Unknown"}, {"name", "x"}},
         storedCore("Mail")});
  shown();
  EXPECT_EQ(names(), (Names{"Finder", "Mail"}));
  EXPECT_EQ(storedNames(), (Names{"Finder", "Mail"}));
  EXPECT_EQ(platform.preferences.datedCopies, 1);
}

TEST_F(OrbelWindowControllerTest, AReadableListIsNotWrittenByShowing) {
  store({storedCore("Finder"), storedCollection("Work", {storedCore("Mail")})});
  shown();
  EXPECT_EQ(platform.preferences.writes, 0);
  EXPECT_EQ(platform.preferences.datedCopies, 0);
}

TEST_F(OrbelWindowControllerTest, AStoredValueThatIsNoListIsKeptAsideBeforeTheFirstWrite) {
  platform.preferences.values["menuItems"] = PropertyList("nonsense");
  shown();
  EXPECT_EQ(controller().menuItems().size(), 6u);
  EXPECT_EQ(platform.preferences.datedCopies, 1);
  EXPECT_FALSE(platform.logged.empty());
}

TEST_F(OrbelWindowControllerTest, AMemberThatCouldNotBeReadIsKeptAsideBeforeTheNextChangeIsSaved) {
  store({storedCollection("Work", {PropertyList::Dictionary{{"class", "Unknown"}}, storedCore("Mail")}),
         storedCore("Finder")});
  shown();
  EXPECT_EQ(platform.preferences.datedCopies, 0);
  controller().didMoveItem(at(0), at(1));
  controller().didMoveItem(at(0), at(1));
  EXPECT_EQ(platform.preferences.datedCopies, 1);
}

TEST_F(OrbelWindowControllerTest, StoredCollectionsAndBookmarksRoundTripUntouched) {
  const PropertyList::List items = {
      storedCollection("Arbeit", {storedFile("/home/u/a b.txt", "Notes"),
                                  storedCollection("Inner", {storedCore("Mail")})}),
      storedApp("/usr/share/applications/editor.desktop", "Editor"), storedCore("Safari")};
  store(items);
  shown();
  controller().persistItems();
  EXPECT_EQ(platform.preferences.values["menuItems"], PropertyList(items));
}

TEST_F(OrbelWindowControllerTest, TheEarlierProgramIsActivatedOnlyWhenTheCallerAsksForIt) {
  const auto editor = platform.workspace.launch(7, "Editor");
  platform.workspace.frontmost = editor;
  shown().hideWindow(false);
  EXPECT_TRUE(editor->activations.empty());
  EXPECT_EQ(controller().lastFrontmostApp(), nullptr);
  fadeOut();
  shown().hideWindow(true);
  EXPECT_EQ(editor->activations, std::vector{ActivationReason::restore});
}

TEST_F(OrbelWindowControllerTest, AProgramThatHasEndedIsNotActivated) {
  const auto editor = platform.workspace.launch(7, "Editor");
  platform.workspace.frontmost = editor;
  shown();
  platform.workspace.terminate(7);
  controller().hideWindow(true);
  EXPECT_TRUE(editor->activations.empty());
}

TEST_F(OrbelWindowControllerTest, AfterTheFadeOutTheWindowIsOrderedOutAndTheDisappearanceAnnounced) {
  int announced = 0;
  const auto observation =
      NotificationCenter::defaultCenter().observe(kOrbelWindowControllerDidDisappearNotification,
                                                  &controller(), [&](const Notification&) { ++announced; });
  shown().hideWindow(false);
  EXPECT_TRUE(surface().shown);
  EXPECT_EQ(announced, 0);
  fadeOut();
  EXPECT_FALSE(surface().shown);
  EXPECT_EQ(announced, 1);
}

TEST_F(OrbelWindowControllerTest, HidingAgainDuringTheFadeOutDoesNotDrawItOut) {
  shown().hideWindow(true);
  platform.runLoop.advance(0.1);
  controller().hideWindow(true);
  platform.runLoop.advance(0.07);
  EXPECT_FALSE(surface().shown);
}

TEST_F(OrbelWindowControllerTest, AShowDuringTheFadeOutTakesTheMenuBack) {
  int announced = 0;
  const auto observation = NotificationCenter::defaultCenter().observe(
      kOrbelWindowControllerDidDisappearNotification, nullptr, [&](const Notification&) { ++announced; });
  shown().hideWindow(false);
  platform.runLoop.advance(0.1);
  controller().showWindowAtScreenPosition({600, 600});
  platform.runLoop.advance(1);
  EXPECT_EQ(announced, 0);
  EXPECT_TRUE(surface().shown);
  EXPECT_EQ(controller().window().alphaValue(), 1);
}

TEST_F(OrbelWindowControllerTest, TheCloseButtonIgnoresClicksWithin750MillisecondsOfTheFadeIn) {
  shown();
  const double fadedIn = *controller().menuShownTimestamp();
  platform.runLoop.advance(fadedIn + 0.75 - platform.runLoop.now());
  platform.windows.click({500, 500});
  EXPECT_FALSE(controller().window().isFadingOut());
  platform.runLoop.advance(0.01);
  platform.windows.click({500, 500});
  EXPECT_TRUE(controller().window().isFadingOut());
}

TEST_F(OrbelWindowControllerTest, TheCloseButtonDoesNothingBeforeTheFadeInHasEnded) {
  controller().showWindowAtScreenPosition({500, 500});
  platform.windows.click({500, 500});
  EXPECT_FALSE(controller().window().isFadingOut());
}

TEST_F(OrbelWindowControllerTest, EscapeDismissesAtOnceAndGivesTheEarlierProgramBack) {
  const auto editor = platform.workspace.launch(7, "Editor");
  platform.workspace.frontmost = editor;
  shown();
  surface().delegate->cancelRequested();
  EXPECT_TRUE(controller().window().isFadingOut());
  EXPECT_EQ(editor->activations.size(), 1u);
}

TEST_F(OrbelWindowControllerTest, ARunningProgramFollowsTheUsersItemsAndAPinnedOneAppearsOnceWithADot) {
  platform.workspace.launch(7, "Editor", "/apps/editor.desktop", "/usr/bin/editor");
  platform.workspace.launch(8, "Terminal", "/apps/terminal.desktop", "/usr/bin/terminal");
  store({storedApp("/apps/editor.desktop", "Editor"), storedCore("Mail")});
  shown();
  EXPECT_EQ(names(), (Names{"Editor", "Mail", "Terminal"}));
  EXPECT_EQ(dots(), (std::vector{true, false, true}));
}

TEST_F(OrbelWindowControllerTest, AProgramThatStartsOrEndsWhileTheMenuIsOpenComesAndGoes) {
  store({storedCore("Mail")});
  shown();
  platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
  platform.workspace.launch(8, "Terminal", "/apps/terminal.desktop");
  EXPECT_EQ(names(), (Names{"Mail", "Editor", "Terminal"}));
  platform.workspace.terminate(7);
  EXPECT_EQ(names(), (Names{"Mail", "Terminal"}));
  EXPECT_EQ(storedNames(), Names{"Mail"});
}

TEST_F(OrbelWindowControllerTest, APinnedProgramThatStartsOrEndsWhileTheMenuIsOpenGetsAndLosesItsDot) {
  store({storedApp("/apps/editor.desktop", "Editor"), storedCore("Mail")});
  shown();
  const auto dot = [&] { return controller().orbelView().sections().item(at(0))->highlighted(); };
  EXPECT_FALSE(dot());
  platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
  EXPECT_TRUE(dot());
  platform.workspace.terminate(7);
  EXPECT_FALSE(dot());
}

TEST_F(OrbelWindowControllerTest, WhereTheDisplayTellsNoProgramsTheMenuHasTheUsersItemsAlone) {
  platform.workspace.tellsRunningApplications = false;
  platform.workspace.frontmost = platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
  store({storedApp("/apps/editor.desktop", "Editor"), storedCore("Mail")});
  shown();
  EXPECT_EQ(names(), (Names{"Editor", "Mail"}));
  EXPECT_EQ(dots(), (std::vector{false, false}));
  EXPECT_EQ(controller().lastFrontmostApp(), nullptr);
  controller().hideWindow(true);
  fadeOut();
  EXPECT_FALSE(surface().shown);
}

TEST_F(OrbelWindowControllerTest, TheListOfProgramsMayArriveWhileTheMenuIsOpen) {
  platform.workspace.tellsRunningApplications = false;
  platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
  platform.workspace.launch(8, "Terminal", "/apps/terminal.desktop");
  store({storedApp("/apps/editor.desktop", "Editor"), storedCore("Mail")});
  shown();
  platform.workspace.tellRunningApplications();
  EXPECT_EQ(names(), (Names{"Editor", "Mail", "Terminal"}));
  EXPECT_EQ(controller().orbelView().numberOfItemsInSection(0), 3);
  EXPECT_TRUE(controller().orbelView().sections().item(at(0))->highlighted());
  EXPECT_EQ(storedNames(), (Names{"Editor", "Mail"}));
}

TEST_F(OrbelWindowControllerTest, AMenuThatIsToldWhereThePointerIsComesToItAsLongAsItIsShown) {
  controller().moveWindowToScreenPosition({700, 700});
  EXPECT_NE(controller().window().frame().center(), (Point{700, 700})) << "it is not shown yet";
  shown();
  controller().moveWindowToScreenPosition({700, 700});
  EXPECT_EQ(controller().window().frame(), Rect(500, 500, 400, 400));
  EXPECT_EQ(surface().timesShown, 1);
  controller().hideWindow(false);
  controller().moveWindowToScreenPosition({500, 500});
  EXPECT_EQ(controller().window().frame(), Rect(500, 500, 400, 400));
}

TEST_F(OrbelWindowControllerTest, AMenuThatComesToThePointerIsLaidOutForIt) {
  store({storedCore("Mail"), storedCore("Safari")});
  shown();
  platform.windows.movePointer({500, 630});
  const auto isMagnified = [&] { return controller().orbelView().relativeSize(at(0)) != 1; };
  ASSERT_TRUE(isMagnified());
  controller().moveWindowToScreenPosition({500, 630});
  EXPECT_FALSE(isMagnified()) << "it is in the middle now";
}

TEST_F(OrbelWindowControllerTest, AProgramWithoutAnOrdinaryWindowNeverAppears) {
  store({storedCore("Mail")});
  const auto applet = platform.workspace.launch(7, "Applet");
  applet->policy = ActivationPolicy::accessory;
  shown();
  EXPECT_EQ(names(), Names{"Mail"});
}

TEST_F(OrbelWindowControllerTest, AProgramInACollectionIsNotListedAgain) {
  store({storedCollection("Work", {storedApp("/apps/editor.desktop", "Editor")})});
  platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
  shown();
  EXPECT_EQ(names(), Names{"Work"});
  EXPECT_EQ(dots(), std::vector{true});
}

TEST_F(OrbelWindowControllerTest, SwitchingRunningProgramsOffDropsThemAtOnce) {
  store({storedCore("Mail")});
  platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
  shown();
  ASSERT_EQ(names(), (Names{"Mail", "Editor"}));
  AppSettings::sharedInstance().setShowRunningApps(false);
  EXPECT_EQ(names(), Names{"Mail"});
  AppSettings::sharedInstance().setShowRunningApps(true);
  EXPECT_EQ(names(), (Names{"Mail", "Editor"}));
}

TEST_F(OrbelWindowControllerTest, AControllerThatHasEndedHearsNothingMore) {
  {
    const auto other = OrbelWindowController::create();
    EXPECT_EQ(platform.workspace.observerCount(), 1u);
  }
  EXPECT_EQ(platform.workspace.observerCount(), 0u);
  AppSettings::sharedInstance().setWindowTintColor({1, 0, 0, 1});
}

TEST_F(OrbelWindowControllerTest, ANewMenuSizeRecentresTheVisibleMenuAndLeavesAHiddenOneAlone) {
  controller();
  AppSettings::sharedInstance().setMenuSizeSettings(2);
  EXPECT_FALSE(controller().window().isShown());
  shown();
  AppSettings::sharedInstance().setMenuSizeSettings(3);
  EXPECT_EQ(controller().window().frame(), Rect(200, 200, 600, 600));
}

TEST_F(OrbelWindowControllerTest, ALightTintGivesDarkDotsAndADarkGreyButtonADarkOneWhite) {
  shown();
  EXPECT_EQ(controller().closeButton().defaultColor(), Color::darkGray());
  EXPECT_EQ(controller().item(at(0))->highlightColor(), Color::white(0));
  AppSettings::sharedInstance().setWindowTintColor({0.1, 0.1, 0.4, 1});
  EXPECT_EQ(controller().closeButton().defaultColor(), Color::white(1));
  EXPECT_EQ(controller().item(at(0))->highlightColor(), Color::white(1));
  EXPECT_EQ(controller().window().tintColor(), (Color{0.1, 0.1, 0.4, 1}));
}

TEST_F(OrbelWindowControllerTest, ATintOfExactlyTheLimitCountsAsDark) {
  AppSettings::sharedInstance().setWindowTintColor(Color::white(0.66));
  shown();
  EXPECT_EQ(controller().closeButton().defaultColor(), Color::white(1));
  EXPECT_EQ(controller().item(at(0))->highlightColor(), Color::white(1));
  AppSettings::sharedInstance().setWindowTintColor(Color::white(0.67));
  EXPECT_EQ(controller().closeButton().defaultColor(), Color::darkGray());
}

TEST_F(OrbelWindowControllerTest, MagnificationFollowsItsSetting) {
  shown();
  EXPECT_TRUE(controller().orbelView().magnifyItemsOnMouseOver());
  AppSettings::sharedInstance().setMagnifySettings(false);
  EXPECT_FALSE(controller().orbelView().magnifyItemsOnMouseOver());
}

TEST_F(OrbelWindowControllerTest, SwitchedMagnificationShowsUnderAPointerThatRests) {
  shown();
  const Point center = controller().window().frame().center();
  platform.windows.movePointer({center.x + 10, center.y + 120});
  OrbelView& view = controller().orbelView();
  EXPECT_GT(view.relativeSize(at(0)), 4);
  AppSettings::sharedInstance().setMagnifySettings(false);
  EXPECT_EQ(view.relativeSize(at(0)), 1);
  AppSettings::sharedInstance().setMagnifySettings(true);
  EXPECT_GT(view.relativeSize(at(0)), 4);
}

TEST_F(OrbelWindowControllerTest, TheMenuIsVisibleAboveHalfAlpha) {
  controller().window().setAlphaValue(0.5);
  EXPECT_FALSE(controller().windowVisible());
  controller().window().setAlphaValue(0.51);
  EXPECT_TRUE(controller().windowVisible());
}

TEST_F(OrbelWindowControllerTest, HoveringCountsTheSquareFrameAndPopUps) {
  shown();
  platform.windows.pointer = Point{301, 301};
  EXPECT_TRUE(controller().mouseHoveringOverMenu());
  platform.windows.pointer = Point{299, 301};
  EXPECT_FALSE(controller().mouseHoveringOverMenu());
  surface().overOwnPopUp = true;
  EXPECT_TRUE(controller().mouseHoveringOverMenu());
}

TEST_F(OrbelWindowControllerTest, InSwiftModeReachingAnIconOpensItOnce) {
  store({storedApp("/apps/editor.desktop", "Editor"), storedApp("/apps/viewer.desktop", "Viewer")});
  AppSettings::sharedInstance().setSwiftMode(true);
  shown();
  platform.windows.movePointer({500 + 122, 500}); // the first of two icons lies to the right
  platform.windows.movePointer({500 + 121, 501});
  EXPECT_EQ(platform.workspace.actions, Names{"launchPath /apps/editor.desktop"});
  EXPECT_TRUE(controller().window().isFadingOut());
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
}

TEST_F(OrbelWindowControllerTest, InSwiftModeNothingOpensBeforeTheMenuIsVisible) {
  store({storedApp("/apps/editor.desktop", "Editor"), storedApp("/apps/viewer.desktop", "Viewer")});
  AppSettings::sharedInstance().setSwiftMode(true);
  platform.windows.movePointer({500, 500});
  controller().showWindowAtScreenPosition({500, 500});
  platform.windows.movePointer({500 + 122, 500});
  EXPECT_TRUE(platform.workspace.actions.empty());
}

TEST_F(OrbelWindowControllerTest, TitlesShowOverTheIconAndGoWithTheMenu) {
  store({storedApp("/apps/editor.desktop", "Editor"), storedApp("/apps/viewer.desktop", "Viewer")});
  shown();
  platform.windows.movePointer({500 + 122, 500});
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  EXPECT_EQ(platform.windows.shownBubbles[0]->text, "Editor");
  controller().hideWindow(false);
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
}

TEST_F(OrbelWindowControllerTest, TheTitleOfAClickedItemGoesWithTheMenu) {
  store({storedApp("/apps/editor.desktop", "Editor"), storedApp("/apps/viewer.desktop", "Viewer")});
  shown();
  platform.windows.movePointer({500 + 122, 500});
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  platform.windows.click({500 + 122, 500});
  ASSERT_TRUE(controller().window().isFadingOut());
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
  platform.windows.movePointer({500 + 121, 501});
  EXPECT_TRUE(platform.windows.shownBubbles.empty()) << "moving on brings it back";
}

TEST_F(OrbelWindowControllerTest, AMenuThatIsTakenBackInTheMiddleOfItsFadeShowsTitlesAgain) {
  store({storedApp("/apps/editor.desktop", "Editor"), storedApp("/apps/viewer.desktop", "Viewer")});
  shown().hideWindow(false);
  controller().showWindowAtScreenPosition({500, 500});
  platform.windows.movePointer({500 + 122, 500});
  EXPECT_EQ(platform.windows.shownBubbles.size(), 1u);
}

TEST_F(OrbelWindowControllerTest, TheMenuComesToRestAfterAControlPressWhoseReleaseItsContextMenuTook) {
  store({storedApp("/apps/editor.desktop", "Editor"), storedApp("/apps/viewer.desktop", "Viewer")});
  shown();
  platform.windows.movePointer({500 + 122, 500});
  platform.windows.press(PointerButton::primary, kControlFlag);
  ASSERT_EQ(platform.contextMenus.timesOpened, 1);
  platform.windows.loseRelease();
  platform.windows.movePointer({1000, 500});
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
  EXPECT_EQ(controller().orbelView().relativeSize(at(0)), 1);
  platform.windows.movePointer({500 - 122, 500});
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  EXPECT_EQ(platform.windows.shownBubbles[0]->text, "Viewer");
}

TEST_F(OrbelWindowControllerTest, TenThousandItemsAreShown) {
  PropertyList::List items;
  for (int index = 0; index < 10000; ++index)
    items.push_back(storedCore("Item " + std::to_string(index)));
  store(std::move(items));
  shown();
  EXPECT_EQ(controller().orbelView().totalNumberOfItems(), 10000);
}

} // namespace
} // namespace orbel
