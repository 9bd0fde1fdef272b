#include "backends/linux/DesktopEntryIndex.h"

#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/support/glib/MainLoop.h"

#include <gtest/gtest.h>

namespace orbel::linux {
namespace {

class DesktopEntryIndexTest : public testing::Test {
protected:
  DesktopEntryIndexTest() {
    EXPECT_TRUE(test::iterateUntil([this] { return index.entries().empty(); }));
  }
  ~DesktopEntryIndexTest() override {
    desktop.removeAllEntries();
    EXPECT_TRUE(test::iterateUntil([this] { return index.entries().empty(); }));
  }
  void waitFor(const std::string& identifier) {
    ASSERT_TRUE(test::iterateUntil([&] { return index.withIdentifier(identifier) != nullptr; }))
        << identifier;
  }

  DesktopSandbox& desktop = DesktopSandbox::shared();
  DesktopEntryIndex index;
};

std::string pathOf(const DesktopEntry* entry) {
  return entry ? entry->path : "none";
}

TEST_F(DesktopEntryIndexTest, FindsAnEntryByEverythingThatNamesItsProgram) {
  const std::string program = desktop.installProgram("paint", "");
  const auto path = desktop.installEntry(
      "org.example.Paint.desktop", "Name=Paint\nName[de]=Malen\nExec=paint %U\nStartupWMClass=PaintWindow\n");
  waitFor("org.example.Paint");
  EXPECT_EQ(pathOf(index.withIdentifier("org.example.Paint.desktop")), path);
  EXPECT_EQ(pathOf(index.withIdentifier("Org.example.paint")), path);
  EXPECT_EQ(pathOf(index.withStartupWindowClass("PaintWindow")), path);
  EXPECT_EQ(pathOf(index.withStartupWindowClass("paintwindow")), path);
  EXPECT_EQ(pathOf(index.withExecutable(program)), path);
  EXPECT_EQ(pathOf(index.withPath(path)), path);
  EXPECT_EQ(pathOf(index.withName("Malen")), path);
  EXPECT_EQ(pathOf(index.withName("malen")), path);
  EXPECT_EQ(index.withName("Paint"), nullptr);
  EXPECT_EQ(index.withIdentifier(""), nullptr);
  EXPECT_EQ(index.withStartupWindowClass(""), nullptr);
  EXPECT_EQ(index.withExecutable(""), nullptr);
}

TEST_F(DesktopEntryIndexTest, PrefersTheExactSpelling) {
  desktop.installEntry("a.desktop", "Name=A\nExec=/bin/sh\nStartupWMClass=editor\n");
  const auto exact = desktop.installEntry("b.desktop", "Name=B\nExec=/bin/sh\nStartupWMClass=Editor\n");
  waitFor("a");
  waitFor("b");
  EXPECT_EQ(pathOf(index.withStartupWindowClass("Editor")), exact);
}

TEST_F(DesktopEntryIndexTest, KnowsEntriesThatAreNotShownButNotHiddenOnes) {
  desktop.installEntry("quiet.desktop", "Name=Quiet\nExec=/bin/sh\nNoDisplay=true\n");
  desktop.installEntry("hidden.desktop", "Name=Hidden\nExec=/bin/sh\nHidden=true\n");
  waitFor("quiet");
  EXPECT_FALSE(index.withIdentifier("quiet")->isShown);
  EXPECT_EQ(index.withIdentifier("hidden"), nullptr);
}

TEST_F(DesktopEntryIndexTest, FindsByExecutableOnlyWhereTheProgramIsCertain) {
  const std::string office = desktop.installProgram("office", "");
  desktop.installEntry("writer.desktop", "Name=Writer\nExec=office --writer %U\n");
  waitFor("writer");
  EXPECT_EQ(pathOf(index.withExecutable(office)), pathOf(index.withIdentifier("writer")));
  desktop.installEntry("table.desktop", "Name=Table\nExec=office --table %U\n");
  waitFor("table");
  EXPECT_EQ(index.withExecutable(office), nullptr);
  desktop.installEntry("zoffice.desktop", "Name=Office\nExec=office %U\n");
  waitFor("zoffice");
  EXPECT_EQ(pathOf(index.withExecutable(office)), pathOf(index.withIdentifier("zoffice")));
}

TEST_F(DesktopEntryIndexTest, FindsNoTerminalEntryByItsExecutable) {
  const std::string program = desktop.installProgram("console-program", "");
  desktop.installEntry("console.desktop", "Name=Console\nExec=console-program\nTerminal=true\n");
  waitFor("console");
  EXPECT_EQ(index.withExecutable(program), nullptr);
}

TEST_F(DesktopEntryIndexTest, FollowsChangesAndTellsObserversOnceTheNewEntriesCanBeRead) {
  bool sawNew = false;
  const auto registration =
      index.observeChanges([&] { sawNew = sawNew || index.withIdentifier("later") != nullptr; });
  desktop.installEntry("later.desktop", "Name=Later\nExec=/bin/sh\n");
  ASSERT_TRUE(test::iterateUntil([&] { return sawNew; }));
  desktop.removeEntry("later.desktop");
  EXPECT_TRUE(test::iterateUntil([&] { return index.withIdentifier("later") == nullptr; }));
}

TEST_F(DesktopEntryIndexTest, TakesTheUsersEntryBeforeTheSystems) {
  desktop.installSystemEntry("both.desktop", "Name=System\nExec=/bin/sh\n");
  waitFor("both");
  const auto own = desktop.installEntry("both.desktop", "Name=Own\nExec=/bin/sh\n");
  EXPECT_TRUE(test::iterateUntil([&] { return pathOf(index.withIdentifier("both")) == own; }));
}

TEST_F(DesktopEntryIndexTest, GivesAPathTheIdentifierOfItsPlace) {
  const std::string root = desktop.root();
  EXPECT_EQ(DesktopEntryIndex::identifierForPath(root + "/data/applications/a.desktop"), "a.desktop");
  EXPECT_EQ(DesktopEntryIndex::identifierForPath(root + "/system/applications/kde/a.desktop"),
            "kde-a.desktop");
  EXPECT_EQ(DesktopEntryIndex::identifierForPath("/elsewhere/kde/a.desktop"), "a.desktop");
  EXPECT_EQ(DesktopEntryIndex::identifierForPath(root + "/data/applications/a.txt"), "");
}

} // namespace
} // namespace orbel::linux
