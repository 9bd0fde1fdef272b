#include "tests/controllers/ControllerFixture.h"

namespace orbel {
namespace {

class Delegate : public CollectionWindowControllerDelegate {
public:
  void collectionWindowControllerShouldClose(const CollectionWindowController&) override { ++closes; }
  void collectionWindowControllerShouldPersistItems() override { ++persists; }
  void collectionWindowControllerDidSelectItem(const CollectionWindowController&) override { ++selections; }
  int closes = 0;
  int persists = 0;
  int selections = 0;
};

class CollectionWindowControllerTest : public ControllerTest {
protected:
  ~CollectionWindowControllerTest() override {
    if (m_collectionMenu) m_collectionMenu->window().setAlphaValue(0);
  }
  void make(PropertyList::List members) {
    collection =
        CollectionMenuItem::withDictionaryRepresentation(storedCollection("Work", std::move(members)));
    m_collectionMenu = CollectionWindowController::withCollectionItem(collection);
    m_collectionMenu->setDelegate(delegateOwner);
  }
  CollectionWindowController& menu() { return *m_collectionMenu; }
  void show() {
    platform.windows.movePointer({500, 500});
    menu().showWindowAtScreenPosition({500, 500});
    platform.runLoop.advance(0.2);
  }
  Names memberNames() { return names(*collection->subitems()); }

  std::shared_ptr<Delegate> delegateOwner = std::make_shared<Delegate>();
  Delegate& delegate = *delegateOwner;
  std::shared_ptr<CollectionMenuItem> collection;

private:
  std::shared_ptr<CollectionWindowController> m_collectionMenu;
};

TEST_F(CollectionWindowControllerTest, ItsSizesAre300And350And400) {
  make({});
  const std::pair<int, double> sizes[] = {{1, 300}, {2, 350}, {3, 400}};
  for (const auto& [setting, side] : sizes) {
    platform.preferences.values["menuSizeSettings"] = setting;
    menu().showWindowAtScreenPosition({500, 500});
    EXPECT_EQ(menu().window().frame(), Rect::centeredAt({500, 500}, side));
  }
  EXPECT_EQ(platform.windows.surfaces.at(0)->level, SurfaceLevel::subMenu);
}

TEST_F(CollectionWindowControllerTest, IsVisibleFromTheEndOfTheFadeInUntilAHideStarts) {
  make({});
  menu().showWindowAtScreenPosition({500, 500});
  platform.runLoop.advance(0.1);
  EXPECT_FALSE(menu().windowVisible());
  platform.runLoop.advance(0.1);
  EXPECT_TRUE(menu().windowVisible());
  menu().hideWindow();
  EXPECT_FALSE(menu().windowVisible());
  EXPECT_TRUE(menu().window().isShown());
  platform.runLoop.advance(0.2);
  EXPECT_FALSE(menu().window().isShown());
}

TEST_F(CollectionWindowControllerTest, AHideDoesNothingWhileItMayNotClose) {
  make({});
  show();
  menu().setCanClose(false);
  menu().hideWindow();
  EXPECT_FALSE(menu().window().isFadingOut());
}

// The main menu is destroyed at the end of its fade, perhaps a moment before this one.
TEST_F(CollectionWindowControllerTest, OutlivesItsDelegate) {
  make({storedCore("A"), storedCore("B")});
  show();
  delegateOwner.reset();
  EXPECT_EQ(menu().delegate(), nullptr);
  platform.windows.click({500, 500});
  menu().didMoveItem(at(0), at(1));
  menu().didClickItem(at(0));
  EXPECT_EQ(memberNames(), (Names{"B", "A"}));
}

TEST_F(CollectionWindowControllerTest, TheCloseButtonWorksImmediatelyAndAsksTheDelegate) {
  make({});
  platform.windows.movePointer({500, 500});
  menu().showWindowAtScreenPosition({500, 500});
  platform.windows.click({500, 500});
  EXPECT_EQ(delegate.closes, 1);
}

TEST_F(CollectionWindowControllerTest, AClickOpensTheMemberAndTellsTheDelegate) {
  make({storedCore("Mail")});
  menu().didClickItem(at(0));
  EXPECT_EQ(platform.workspace.actions, Names{"launch Mail"});
  EXPECT_EQ(delegate.selections, 1);
}

TEST_F(CollectionWindowControllerTest, AClickOnACollectionInsideOpensNothingNewAndHidesBothMenus) {
  make({storedCollection("Inner", {storedCore("Mail")})});
  menu().didClickItem(at(0));
  EXPECT_TRUE(platform.workspace.actions.empty());
  EXPECT_EQ(platform.windows.surfaces.size(), 1u);
  EXPECT_EQ(delegate.selections, 1);
}

TEST_F(CollectionWindowControllerTest, OnlyKindsThatStandForAProgramAreHighlighted) {
  platform.workspace.launch(7, "Mail", "/apps/mail.desktop");
  make({storedCore("Mail"), storedFile("/a.txt", "a"), storedCollection("Inner", {storedCore("Mail")}),
        storedApp("/apps/mail.desktop", "Mail"), storedApp("/apps/idle.desktop", "Idle")});
  std::vector<bool> highlighted;
  for (int index = 0; index < 5; ++index)
    highlighted.push_back(menu().item(at(index))->highlighted());
  EXPECT_EQ(highlighted, (std::vector{true, false, false, true, false}));
}

TEST_F(CollectionWindowControllerTest, InSwiftModeANestedCollectionShowsItsTitleAndAMemberOpens) {
  make({storedCollection("Inner", {}), storedCore("Mail")});
  AppSettings::sharedInstance().setSwiftMode(true);
  show();
  EXPECT_TRUE(menu().shouldDisplayTitle(at(0)));
  EXPECT_EQ(delegate.selections, 0);
  EXPECT_FALSE(menu().shouldDisplayTitle(at(1)));
  EXPECT_EQ(delegate.selections, 1);
}

TEST_F(CollectionWindowControllerTest, NoTitleShowsOverAMenuThatIsFadingAway) {
  make({storedCollection("Inner", {}), storedCore("Mail")});
  show();
  platform.windows.movePointer({500 + 92, 500}); // the first of two lies to the right
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  menu().hideWindow();
  for (const double side : {92.0, 91.0, -92.0}) {
    platform.windows.movePointer({500 + side, 500});
    EXPECT_TRUE(platform.windows.shownBubbles.empty()) << side;
  }
}

TEST_F(CollectionWindowControllerTest, RemovingTheLastMemberLeavesAnEmptyMenuOpen) {
  make({storedCore("Mail")});
  show();
  menu().didRightClickItem(at(0));
  EXPECT_EQ(platform.contextMenus.visibleTitles(), Names{"Remove from Orbel Menu"});
  platform.contextMenus.choose("Remove from Orbel Menu");
  EXPECT_TRUE(collection->subitems()->empty());
  EXPECT_EQ(delegate.persists, 1);
  EXPECT_EQ(menu().orbelView().totalNumberOfItems(), 0);
  EXPECT_TRUE(menu().window().isShown());
  EXPECT_FALSE(menu().window().isFadingOut());
}

TEST_F(CollectionWindowControllerTest, TheFinderHasAContextMenuHere) {
  make({storedCore("Finder")});
  menu().didRightClickItem(at(0));
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
}

TEST_F(CollectionWindowControllerTest, QuitAndOpenWithAreOfferedAsInTheMainMenu) {
  platform.workspace.urlHandlers["orbelmenu-toolkit"] = "/toolkit.desktop";
  platform.workspace.launch(7, "Mail", "/apps/mail.desktop");
  platform.workspace.defaultApplications["/a.txt"] = "/apps/editor.desktop";
  platform.workspace.candidates["/a.txt"] = {"/apps/editor.desktop"};
  make({storedCore("Mail"), storedFile("/a.txt", "a")});
  menu().didRightClickItem(at(0));
  EXPECT_EQ(platform.contextMenus.visibleTitles(), (Names{"Quit Application", "Remove from Orbel Menu"}));
  platform.contextMenus.choose("Quit Application");
  EXPECT_EQ(platform.workspace.actions, Names{"openUrl orbelmenu-toolkit:terminate/7"});
  platform.runLoop.advance(0.51);
  menu().didRightClickItem(at(1));
  EXPECT_EQ(platform.contextMenus.visibleTitles(), (Names{"Open With...", "Remove from Orbel Menu"}));
  platform.contextMenus.choose("editor.desktop");
  EXPECT_EQ(delegate.selections, 1);
}

TEST_F(CollectionWindowControllerTest, ItsContextMenuOpensAtThePointerOnItsOwnSurface) {
  make({storedCore("Mail")});
  menu().showWindowAtScreenPosition({500, 500});
  platform.windows.movePointer({510, 520});
  menu().didRightClickItem(at(0));
  EXPECT_EQ(platform.contextMenus.surface, &menu().window().surface());
  const Point origin = menu().window().frame().origin;
  EXPECT_EQ(platform.contextMenus.place, (Point{510 - origin.x, 520 - origin.y}));
}

TEST_F(CollectionWindowControllerTest, QuittingIsShownInGreyForAProgramThatCannotBeAsked) {
  platform.workspace.urlHandlers["orbelmenu-toolkit"] = "/toolkit.desktop";
  platform.workspace.launch(-1, "Mail", "/apps/mail.desktop")->closable = false;
  make({storedCore("Mail")});
  menu().didRightClickItem(at(0));
  ASSERT_NE(platform.contextMenus.find("Quit Application"), nullptr);
  EXPECT_FALSE(platform.contextMenus.find("Quit Application")->isEnabled);
}

TEST_F(CollectionWindowControllerTest, WithoutTheCompanionQuittingIsNotOffered) {
  platform.workspace.launch(7, "Mail", "/apps/mail.desktop");
  make({storedCore("Mail")});
  menu().didRightClickItem(at(0));
  EXPECT_EQ(platform.contextMenus.visibleTitles(), Names{"Remove from Orbel Menu"});
}

TEST_F(CollectionWindowControllerTest, AnOpenWithTagOutOfRangeDoesNothing) {
  platform.workspace.candidates["/a.txt"] = {"/apps/editor.desktop"};
  make({storedFile("/a.txt", "a")});
  menu().didRightClickItem(at(0));
  menu().openClicked(1);
  menu().openClicked(-1);
  EXPECT_TRUE(platform.workspace.actions.empty());
  EXPECT_EQ(delegate.selections, 0);
  menu().openClicked(0);
  EXPECT_EQ(platform.workspace.actions, Names{"openWith /a.txt | /apps/editor.desktop"});
  EXPECT_EQ(delegate.selections, 1);
}

TEST_F(CollectionWindowControllerTest, ARightClickWhileTheContextMenuIsOpenOnlyClosesIt) {
  make({storedCore("Mail"), storedCore("Safari")});
  menu().didRightClickItem(at(0));
  EXPECT_TRUE(menu().itemMenuVisible());
  menu().didRightClickItem(at(1));
  EXPECT_FALSE(platform.contextMenus.isOpen);
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
  EXPECT_EQ(menu().targetMenuItem(), collection->subitems()->at(0));
}

TEST_F(CollectionWindowControllerTest, ARightClickWithinHalfASecondOfTheClosingIsStillTakenForClosing) {
  make({storedCore("Mail")});
  menu().didRightClickItem(at(0));
  platform.contextMenus.close();
  platform.runLoop.advance(0.49);
  menu().didRightClickItem(at(0));
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
  platform.runLoop.advance(0.02);
  menu().didRightClickItem(at(0));
  EXPECT_EQ(platform.contextMenus.timesOpened, 2);
}

TEST_F(CollectionWindowControllerTest, ARightClickBetweenMembersDoesNothing) {
  make({storedCore("Mail")});
  menu().didRightClickOutsideOfItem(at(0));
  EXPECT_EQ(platform.contextMenus.timesOpened, 0);
  EXPECT_EQ(menu().targetMenuItem(), nullptr);
}

TEST_F(CollectionWindowControllerTest, AMoveIsSavedThroughTheDelegate) {
  make({storedCore("A"), storedCore("B"), storedCore("C")});
  show();
  const auto shownFirst = menu().orbelView().sections().item(at(0));
  menu().didMoveItem(at(0), at(2));
  EXPECT_EQ(memberNames(), (Names{"B", "C", "A"}));
  EXPECT_EQ(delegate.persists, 1);
  EXPECT_EQ(menu().orbelView().sections().item(at(0)), shownFirst) << "the view has moved it itself";
}

TEST_F(CollectionWindowControllerTest, DroppedFilesBecomeMembersInTheDragsOrder) {
  make({storedCore("A"), storedCore("B")});
  EXPECT_TRUE(menu().didReceiveDrag(FakeDrag(Names{"/x.txt", "/y.app"}), at(1)));
  EXPECT_EQ(memberNames(), (Names{"A", "x.txt", "y.app", "B"}));
  EXPECT_EQ(delegate.persists, 1);
}

TEST_F(CollectionWindowControllerTest, EachDocumentDroppedOntoAMemberOpensAndIsReported) {
  make({storedApp("/apps/editor.desktop", "Editor"), storedFile("/x", "x")});
  const FakeDrag drag(Names{"/a.txt", "/b.txt"});
  EXPECT_TRUE(menu().canDrop(drag, at(0)));
  EXPECT_FALSE(menu().canDrop(drag, at(1)));
  EXPECT_TRUE(menu().didDrop(drag, at(0)));
  EXPECT_EQ(platform.workspace.actions.size(), 2u);
  EXPECT_EQ(delegate.selections, 2);
  EXPECT_FALSE(menu().didDrop(drag, at(1)));
}

TEST_F(CollectionWindowControllerTest, ACollectionInsideTakesNoFiles) {
  make({storedCollection("Inner", {storedCore("Mail")})});
  const FakeDrag drag(Names{"/a.txt"});
  EXPECT_FALSE(menu().canDrop(drag, at(0)));
  EXPECT_FALSE(menu().didDrop(drag, at(0)));
  EXPECT_EQ(collection->subitems()->at(0)->subitems()->size(), 1u);
  EXPECT_EQ(delegate.persists, 0);
}

TEST_F(CollectionWindowControllerTest, ItemsAreNeverDroppedOntoItems) {
  make({storedCore("A"), storedCollection("Inner", {})});
  EXPECT_FALSE(menu().canDropItem(at(0), at(1)));
  menu().didDropItem(at(0), at(1));
  EXPECT_EQ(memberNames(), (Names{"A", "Inner"}));
  EXPECT_EQ(delegate.persists, 0);
}

TEST_F(CollectionWindowControllerTest, ARegularProgramThatComesOrGoesUpdatesTheDots) {
  make({storedCore("Mail")});
  show();
  const auto dot = [&] { return menu().orbelView().sections().item({0, 0})->highlighted(); };
  EXPECT_FALSE(dot());
  platform.workspace.launch(7, "Mail");
  EXPECT_TRUE(dot());
  platform.workspace.terminate(7);
  EXPECT_FALSE(dot());
}

TEST_F(CollectionWindowControllerTest, TheListOfProgramsMayArriveWhileItIsOpen) {
  platform.workspace.tellsRunningApplications = false;
  platform.workspace.launch(7, "Mail");
  make({storedCore("Mail")});
  show();
  const auto dot = [&] { return menu().orbelView().sections().item({0, 0})->highlighted(); };
  EXPECT_FALSE(dot());
  platform.workspace.tellRunningApplications();
  EXPECT_TRUE(dot());
}

TEST_F(CollectionWindowControllerTest, AProgramWithoutAnOrdinaryWindowThatComesOrGoesChangesNothing) {
  make({storedCore("Mail")});
  show();
  const auto shown = [&] { return menu().orbelView().sections().item({0, 0}); };
  const auto before = shown();
  const auto applet = std::make_shared<FakeRunningApplication>(7, "Applet");
  applet->policy = ActivationPolicy::accessory;
  platform.workspace.running.push_back(applet);
  platform.workspace.notifyRunningApplications();
  EXPECT_EQ(shown(), before);
  platform.workspace.terminate(7);
  EXPECT_EQ(shown(), before);
}

TEST_F(CollectionWindowControllerTest, DotsAreBlackOnATintThatIsLighterThanTheLimitElseWhite) {
  make({storedCore("Mail")});
  const std::pair<double, double> colors[] = {{1, 0}, {0.67, 0}, {0.66, 1}, {0, 1}};
  for (const auto& [tint, dot] : colors) {
    AppSettings::sharedInstance().setWindowTintColor(Color::white(tint));
    EXPECT_EQ(menu().item(at(0))->highlightColor(), Color::white(dot)) << tint;
  }
}

TEST_F(CollectionWindowControllerTest, TheTintAndTheMagnificationAreFollowed) {
  make({storedCore("Mail")});
  AppSettings::sharedInstance().setWindowTintColor({0, 0, 0.5, 1});
  EXPECT_EQ(menu().window().tintColor(), (Color{0, 0, 0.5, 1}));
  EXPECT_EQ(menu().closeButton().defaultColor(), Color::white(1));
  AppSettings::sharedInstance().setMagnifySettings(false);
  EXPECT_FALSE(menu().orbelView().magnifyItemsOnMouseOver());
}

} // namespace
} // namespace orbel
