// What every ContextMenus keeps to.
//
// Subject: the menus of a program, and a user. Each action returns when all that comes of it has come.
//   ContextMenus& menus();
//   const Surface& surface();               its frame is (300, 400, 400, 400), and the screen holds it
//   bool isOpen();                          whether one is open on the screen
//   Point place();                          in screen points: where the corner of the one that is open stands
//   std::vector<std::string> titles();      of the menu that is open, "-" for a separator
//   void choose(const std::string& title);  the user does, opening submenus on the way
//   void tryToChoose(const std::string& title);  the same with an entry that may be disabled
//   void dismiss();                         the user closes the menu without a choice
#pragma once

#include "platform/ContextMenus.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orbel::contracts {

template <class Subject>
class ContextMenusContract : public testing::Test, public ContextMenuDelegate {
public:
  void menuWillOpen() override { calls += "open "; }
  void menuDidClose() override {
    calls += "close ";
    if (destroysAtClose) open.reset();
  }

protected:
  void TearDown() override {
    open.reset();
    EXPECT_FALSE(subject.isOpen());
  }
  MenuEntry entry(const std::string& title, std::int64_t tag = 0) {
    MenuEntry made;
    made.title = title;
    made.tag = tag;
    made.action = [this](const MenuEntry& chosen) {
      calls += chosen.title + std::to_string(chosen.tag) + " ";
    };
    return made;
  }
  MenuEntry hidden(const std::string& title) {
    MenuEntry made = entry(title);
    made.isHidden = true;
    return made;
  }
  static MenuEntry separator() {
    MenuEntry made;
    made.isSeparator = true;
    return made;
  }
  void popUp(std::vector<MenuEntry> entries) {
    open = subject.menus().popUp(std::move(entries), this, subject.surface(), {100, 150});
  }

  Subject subject;
  std::unique_ptr<OpenContextMenu> open;
  std::string calls;
  bool destroysAtClose = false;
};

TYPED_TEST_SUITE_P(ContextMenusContract);

TYPED_TEST_P(ContextMenusContract, TheDelegateHearsOfOpeningAndOfClosingBeforeTheAction) {
  this->popUp({this->entry("Rename", 7), this->entry("Remove", 8)});
  EXPECT_TRUE(this->subject.isOpen());
  EXPECT_EQ(this->calls, "open ");
  this->subject.choose("Rename");
  EXPECT_EQ(this->calls, "open close Rename7 ");
  EXPECT_FALSE(this->subject.isOpen());
}

TYPED_TEST_P(ContextMenusContract, TheMenuStandsAtItsPlaceOnTheSurface) {
  this->popUp({this->entry("Rename")});
  EXPECT_EQ(this->subject.place(), (Point{400, 550}));
  this->open =
      this->subject.menus().popUp({this->entry("Rename")}, nullptr, this->subject.surface(), {-50, 380});
  EXPECT_EQ(this->subject.place(), (Point{250, 780})) << "also outside its bounds";
}

TYPED_TEST_P(ContextMenusContract, ADismissedMenuClosesWithoutAnAction) {
  this->popUp({this->entry("Rename")});
  this->subject.dismiss();
  EXPECT_EQ(this->calls, "open close ");
  EXPECT_FALSE(this->subject.isOpen());
}

TYPED_TEST_P(ContextMenusContract, CancellingClosesOnceWithoutAnAction) {
  this->popUp({this->entry("Rename")});
  this->open->cancelTracking();
  this->open->cancelTracking();
  EXPECT_EQ(this->calls, "open close ");
  EXPECT_FALSE(this->subject.isOpen());
}

TYPED_TEST_P(ContextMenusContract, HiddenEntriesAreLeftOutAndSeparatorsAreNot) {
  this->popUp({this->hidden("Quit"), this->entry("Rename"), this->separator(), this->entry("Remove")});
  EXPECT_EQ(this->subject.titles(), (std::vector<std::string>{"Rename", "-", "Remove"}));
}

TYPED_TEST_P(ContextMenusContract, ADisabledEntryIsShownAndCannotBeChosen) {
  MenuEntry quit = this->entry("Quit");
  quit.isEnabled = false;
  this->popUp({quit, this->entry("Remove")});
  EXPECT_EQ(this->subject.titles(), (std::vector<std::string>{"Quit", "Remove"}));
  this->subject.tryToChoose("Quit");
  EXPECT_TRUE(this->subject.isOpen());
  EXPECT_EQ(this->calls, "open ");
  this->subject.tryToChoose("Remove");
  EXPECT_EQ(this->calls, "open close Remove0 ");
}

TYPED_TEST_P(ContextMenusContract, AMenuWithoutAVisibleEntryNeverOpens) {
  this->popUp({this->hidden("Quit"), this->separator()});
  ASSERT_TRUE(this->open);
  EXPECT_FALSE(this->subject.isOpen());
  this->open->cancelTracking();
  EXPECT_EQ(this->calls, "");
}

TYPED_TEST_P(ContextMenusContract, AnEntryOfASubmenuActsLikeAnyOther) {
  MenuEntry openWith = this->entry("Open With");
  openWith.submenu = {this->entry("Editor", 1), this->entry("Viewer", 2)};
  this->popUp({openWith, this->entry("Remove")});
  this->subject.choose("Viewer");
  EXPECT_EQ(this->calls, "open close Viewer2 ");
}

TYPED_TEST_P(ContextMenusContract, DestroyingAnOpenMenuClosesItAndCallsNothing) {
  this->popUp({this->entry("Rename")});
  this->open.reset();
  EXPECT_FALSE(this->subject.isOpen());
  EXPECT_EQ(this->calls, "open ");
}

TYPED_TEST_P(ContextMenusContract, NothingIsCalledAfterTheMenuWasDestroyedAsItCloses) {
  this->destroysAtClose = true;
  this->popUp({this->entry("Rename")});
  this->subject.choose("Rename");
  EXPECT_EQ(this->calls, "open close ");
}

TYPED_TEST_P(ContextMenusContract, AnActionMayOpenTheNextMenu) {
  MenuEntry again = this->entry("Again");
  again.action = [this](const MenuEntry&) { this->popUp({this->entry("Next")}); };
  this->popUp({again});
  this->subject.choose("Again");
  EXPECT_TRUE(this->subject.isOpen());
  this->subject.choose("Next");
  EXPECT_EQ(this->calls, "open close open close Next0 ");
}

TYPED_TEST_P(ContextMenusContract, TheDelegateMayBeEmpty) {
  this->open = this->subject.menus().popUp({this->entry("Rename")}, nullptr, this->subject.surface(), {0, 0});
  this->subject.choose("Rename");
  EXPECT_EQ(this->calls, "Rename0 ");
}

REGISTER_TYPED_TEST_SUITE_P(ContextMenusContract, TheDelegateHearsOfOpeningAndOfClosingBeforeTheAction,
                            TheMenuStandsAtItsPlaceOnTheSurface, ADismissedMenuClosesWithoutAnAction,
                            CancellingClosesOnceWithoutAnAction, HiddenEntriesAreLeftOutAndSeparatorsAreNot,
                            ADisabledEntryIsShownAndCannotBeChosen, AMenuWithoutAVisibleEntryNeverOpens,
                            AnEntryOfASubmenuActsLikeAnyOther, DestroyingAnOpenMenuClosesItAndCallsNothing,
                            NothingIsCalledAfterTheMenuWasDestroyedAsItCloses, AnActionMayOpenTheNextMenu,
                            TheDelegateMayBeEmpty);

} // namespace orbel::contracts
