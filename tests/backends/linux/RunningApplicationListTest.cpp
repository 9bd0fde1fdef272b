#include "backends/linux/RunningApplicationList.h"

#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/backends/linux/FakeIconLoader.h"
#include "tests/backends/linux/FakeTopLevelWindows.h"
#include "tests/backends/linux/IdleProgram.h"
#include "tests/support/glib/MainLoop.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace orbel::linux {
namespace {

class RunningApplicationListTest : public testing::Test {
protected:
  void SetUp() override {
    list.emplace(windows, entries, icons, [this](const std::string& id) { return startedAs[id]; });
  }
  void TearDown() override {
    list.reset();
    desktop.removeAllEntries();
    EXPECT_TRUE(test::iterateUntil([this] { return entries.entries().empty(); }));
  }
  std::string install(const std::string& identifier, const std::string& lines) {
    auto path = desktop.installEntry(identifier, lines);
    EXPECT_TRUE(test::iterateUntil([&] { return entries.withPath(path) != nullptr; }));
    return path;
  }
  static common::TopLevelWindow window(std::uint64_t id, std::optional<std::int32_t> process,
                                       const std::string& className = "") {
    common::TopLevelWindow window;
    window.id = id;
    window.processIdentifier = process;
    window.className = className;
    return window;
  }
  std::vector<std::string> names() const {
    std::vector<std::string> result;
    for (const auto& application : list->applications())
      result.push_back(application->localizedName());
    return result;
  }

  DesktopSandbox& desktop = DesktopSandbox::shared();
  const std::string folder = desktop.makeFolder();
  FakeTopLevelWindows windows;
  FakeIconLoader loader;
  DesktopEntryIndex entries;
  FileIcons icons{loader, entries};
  std::map<std::string, std::string> startedAs;
  std::optional<RunningApplicationList> list;
};

TEST_F(RunningApplicationListTest, HasOneRecordForEachProcessInTheOrderOfTheFirstWindows) {
  const IdleProgram a(folder + "/a");
  const IdleProgram b(folder + "/b");
  windows.open(window(1, a.processIdentifier(), "A"));
  windows.open(window(2, b.processIdentifier(), "B"));
  windows.open(window(3, a.processIdentifier(), "A"));
  EXPECT_EQ(names(), (std::vector<std::string>{"A", "B"}));
  const auto applications = list->applications();
  EXPECT_EQ(applications[0]->processIdentifier(), a.processIdentifier());
  EXPECT_EQ(applications[0]->executablePath(), folder + "/a");
  EXPECT_EQ(applications[0]->bundlePath(), folder + "/a");
  EXPECT_EQ(applications[0]->activationPolicy(), ActivationPolicy::regular);
  EXPECT_FALSE(applications[0]->isEqual(*applications[1]));
}

TEST_F(RunningApplicationListTest, ListsTwoProcessesOfOneProgramTwice) {
  const IdleProgram first(folder + "/a");
  const IdleProgram second(std::vector<std::string>{folder + "/a"});
  windows.open(window(1, first.processIdentifier(), "A"));
  windows.open(window(2, second.processIdentifier(), "A"));
  EXPECT_EQ(list->applications().size(), 2u);
}

TEST_F(RunningApplicationListTest, LeavesOutProcessesWithoutAnOrdinaryWindow) {
  const IdleProgram panel(folder + "/panel");
  windows.list.push_back(window(1, panel.processIdentifier(), "Panel"));
  windows.changed();
  EXPECT_TRUE(list->applications().empty());
}

TEST_F(RunningApplicationListTest, KeepsTheRecordOfAProcessAndTellsOnlyOfRealChanges) {
  int calls = 0;
  const auto registration = list->observeChanges([&] { ++calls; });
  const IdleProgram a(folder + "/a");
  windows.open(window(1, a.processIdentifier(), "A"));
  EXPECT_EQ(calls, 1);
  const auto record = list->applications().at(0);
  windows.open(window(2, a.processIdentifier(), "A"));
  windows.close(1);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(list->applications().at(0), record);
  windows.close(2);
  EXPECT_EQ(calls, 2);
  EXPECT_TRUE(list->applications().empty());
}

TEST_F(RunningApplicationListTest, AListOfWindowsThatArrivesLaterIsOneChange) {
  const IdleProgram a(folder + "/a");
  int calls = 0;
  const auto observer = list->observeChanges([&] { ++calls; });
  EXPECT_TRUE(list->applications().empty());
  EXPECT_EQ(list->frontmost(), nullptr);
  for (auto told : {window(1, a.processIdentifier(), "A"), window(2, std::nullopt, "B")}) {
    told.isNormal = true;
    windows.list.push_back(told);
  }
  windows.changed();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(list->applications().size(), 2u);
}

TEST_F(RunningApplicationListTest, GroupsWindowsWithoutAProcessByTheirClass) {
  windows.open(window(1, std::nullopt, "Remote"));
  windows.open(window(2, std::nullopt, "Remote"));
  windows.open(window(3, std::nullopt, "Other"));
  windows.open(window(4, std::nullopt));
  windows.open(window(5, std::nullopt));
  EXPECT_EQ(names(), (std::vector<std::string>{"Remote", "Other", "window 4", "window 5"}));
  const auto remote = list->applications().at(0);
  EXPECT_EQ(remote->processIdentifier(), -1);
  EXPECT_EQ(remote->executablePath(), std::nullopt);
  EXPECT_FALSE(remote->canBeAskedToClose());
  EXPECT_FALSE(remote->isTerminated());
  windows.close(1);
  EXPECT_FALSE(remote->isTerminated());
  windows.close(2);
  EXPECT_TRUE(remote->isTerminated());
}

TEST_F(RunningApplicationListTest, NeverTakesItselfForAnOrdinaryProgram) {
  windows.open(window(1, ::getpid(), "Orbel"));
  ASSERT_EQ(list->applications().size(), 1u);
  EXPECT_EQ(list->applications().at(0)->activationPolicy(), ActivationPolicy::accessory);
}

TEST_F(RunningApplicationListTest,
       MatchesTheEntryByApplicationIdThenWindowClassThenIdentifierThenExecutable) {
  const IdleProgram program(folder + "/paint");
  auto open = [&](common::TopLevelWindow described) {
    windows.list.clear();
    windows.open(std::move(described));
    return list->applications().at(0)->bundlePath().value_or("none");
  };
  common::TopLevelWindow described = window(1, program.processIdentifier(), "Class");
  described.instanceName = "instance";
  described.applicationId = "org.example.ById";

  const auto byExecutable = install("exe.desktop", "Name=Exe\nExec=" + folder + "/paint %U\n");
  EXPECT_EQ(open(described), byExecutable);
  const auto byInstance = install("instance.desktop", "Name=Instance\nExec=/bin/sh -c x\n");
  EXPECT_EQ(open(described), byInstance);
  const auto byClass = install("class.desktop", "Name=Class\nExec=/bin/sh -c x\n");
  EXPECT_EQ(open(described), byClass);
  const auto byWindowClass = install("w.desktop", "Name=W\nExec=/bin/sh -c x\nStartupWMClass=Class\n");
  EXPECT_EQ(open(described), byWindowClass);
  const auto byId = install("org.example.ById.desktop", "Name=Id\nExec=/bin/sh -c x\n");
  EXPECT_EQ(open(described), byId);
  EXPECT_EQ(names(), std::vector<std::string>{"Id"});
}

TEST_F(RunningApplicationListTest, MatchesAnEntryThatIsNotShown) {
  install("quiet.desktop", "Name=Quiet\nExec=/bin/sh\nNoDisplay=true\n");
  const IdleProgram program(folder + "/a");
  windows.open(window(1, program.processIdentifier(), "Quiet"));
  EXPECT_TRUE(list->applications().at(0)->bundlePath()->ends_with("/quiet.desktop"));
}

TEST_F(RunningApplicationListTest, MatchesWhatWeStartedByItsStartupIdentifier) {
  const std::string path = folder + "/own.desktop";
  DesktopSandbox::write(path, "[Desktop Entry]\nType=Application\nName=Own\nExec=/bin/sh\n");
  startedAs["start-1"] = path;
  const IdleProgram program(folder + "/a");
  auto described = window(1, program.processIdentifier(), "Whatever");
  described.startupId = "start-1";
  windows.open(described);
  EXPECT_EQ(list->applications().at(0)->bundlePath(), path);
  EXPECT_TRUE(RunningApplicationList::runsBundle(*list->records().at(0), path));
}

TEST_F(RunningApplicationListTest, NoticesAnApplicationIdThatComesAfterTheWindow) {
  const auto path = install("org.example.Late.desktop", "Name=Late\nExec=/bin/sh -c x\n");
  const IdleProgram program(folder + "/a");
  windows.open(window(1, program.processIdentifier(), "early"));
  EXPECT_EQ(names(), std::vector<std::string>{"early"});
  const auto record = list->applications().at(0);
  int calls = 0;
  const auto registration = list->observeChanges([&] { ++calls; });
  windows.list[0].applicationId = "org.example.Late";
  windows.changed();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(record->localizedName(), "Late");
  EXPECT_EQ(list->applications().at(0), record);
}

TEST_F(RunningApplicationListTest, ShowsTheProgramWithoutItsEntryAfterThatWasRemoved) {
  const IdleProgram program(folder + "/paint");
  install("paint.desktop", "Name=Malen\nExec=" + folder + "/paint\n");
  windows.open(window(1, program.processIdentifier(), "PaintClass"));
  EXPECT_EQ(names(), std::vector<std::string>{"Malen"});
  desktop.removeEntry("paint.desktop");
  EXPECT_TRUE(test::iterateUntil([&] { return names() == std::vector<std::string>{"PaintClass"}; }));
  EXPECT_EQ(list->applications().at(0)->bundlePath(), folder + "/paint");
}

TEST_F(RunningApplicationListTest, KnowsAnAppImageByItsOwnPath) {
  const std::string appImage = folder + "/Paint.AppImage";
  const IdleProgram program(folder + "/mount/bin/paint",
                            {"APPDIR=" + folder + "/mount", "APPIMAGE=" + appImage});
  windows.open(window(1, program.processIdentifier(), "Paint-class"));
  const auto record = list->records().at(0);
  EXPECT_EQ(record->localizedName(), "Paint");
  EXPECT_EQ(record->bundlePath(), appImage);
  EXPECT_EQ(record->executablePath(), folder + "/mount/bin/paint");
  EXPECT_TRUE(RunningApplicationList::runsBundle(*record, appImage));
}

TEST_F(RunningApplicationListTest, KnowsAnAppImageThatHasAnEntryByBoth) {
  const std::string appImage = folder + "/Paint.AppImage";
  IdleProgram::makeIdleExecutable(appImage);
  const auto path = install("paint.desktop", "Name=Paint\nExec=" + appImage + " %U\n");
  const IdleProgram program(folder + "/mount/bin/paint",
                            {"APPDIR=" + folder + "/mount", "APPIMAGE=" + appImage});
  windows.open(window(1, program.processIdentifier(), "x"));
  const auto record = list->records().at(0);
  EXPECT_EQ(record->bundlePath(), path);
  EXPECT_TRUE(RunningApplicationList::runsBundle(*record, appImage));
  EXPECT_TRUE(RunningApplicationList::runsBundle(*record, path));
  EXPECT_TRUE(RunningApplicationList::runsBundle(*record, "/another/copy/paint.desktop"));
  EXPECT_FALSE(RunningApplicationList::runsBundle(*record, "/another/copy/paint2.desktop"));
  EXPECT_FALSE(RunningApplicationList::runsBundle(*record, ""));
}

TEST_F(RunningApplicationListTest, TerminatesWithItsProcessAndNotWithItsWindows) {
  IdleProgram program(folder + "/a");
  windows.open(window(1, program.processIdentifier(), "A"));
  const auto record = list->applications().at(0);
  windows.close(1);
  EXPECT_FALSE(record->isTerminated());
  EXPECT_FALSE(record->activate(ActivationReason::userChoice));
  program.end();
  EXPECT_TRUE(record->isTerminated());
}

TEST_F(RunningApplicationListTest, BringsTheLastActiveWindowForwardElseTheNewest) {
  const IdleProgram program(folder + "/a");
  windows.open(window(1, program.processIdentifier(), "A"));
  windows.open(window(2, program.processIdentifier(), "A"));
  const auto record = list->applications().at(0);
  EXPECT_TRUE(record->activate(ActivationReason::userChoice));
  windows.active = 1;
  list->frontmost();
  EXPECT_TRUE(record->activate(ActivationReason::userChoice));
  EXPECT_EQ(windows.activated, (std::vector<std::uint64_t>{2, 1}));
}

TEST_F(RunningApplicationListTest, RestoresTheExactWindowThatWasActiveAtTheSummon) {
  const IdleProgram program(folder + "/a");
  windows.open(window(1, program.processIdentifier(), "A"));
  windows.open(window(2, program.processIdentifier(), "A"));
  windows.active = 1;
  const auto frontmost = list->frontmost();
  ASSERT_TRUE(frontmost);
  EXPECT_EQ(frontmost, list->applications().at(0));
  EXPECT_EQ(windows.mark, 101u);
  windows.active = 2;
  EXPECT_TRUE(frontmost->activate(ActivationReason::restore));
  EXPECT_EQ(windows.restored, (std::vector<std::pair<std::uint64_t, std::uint64_t>>{{1, 101}}));
  EXPECT_TRUE(windows.activated.empty());

  windows.close(1);
  EXPECT_TRUE(frontmost->activate(ActivationReason::restore));
  EXPECT_EQ(windows.restored.back(), (std::pair<std::uint64_t, std::uint64_t>{2, 101}));
  windows.close(2);
  EXPECT_FALSE(frontmost->activate(ActivationReason::restore));
}

TEST_F(RunningApplicationListTest, RestoresADialogAndTheDesktopToo) {
  const IdleProgram program(folder + "/a");
  const IdleProgram desktopProgram(folder + "/desktop");
  windows.list.push_back(window(3, desktopProgram.processIdentifier(), "Desktop"));
  windows.open(window(1, program.processIdentifier(), "A"));
  windows.list.push_back(window(2, program.processIdentifier(), "A"));
  windows.changed();
  windows.active = 2;
  auto frontmost = list->frontmost();
  EXPECT_EQ(frontmost, list->applications().at(0));
  EXPECT_TRUE(frontmost->activate(ActivationReason::restore));
  windows.active = 3;
  frontmost = list->frontmost();
  ASSERT_TRUE(frontmost);
  EXPECT_EQ(frontmost->activationPolicy(), ActivationPolicy::accessory);
  EXPECT_FALSE(frontmost->isTerminated());
  EXPECT_TRUE(frontmost->activate(ActivationReason::restore));
  EXPECT_EQ(windows.restored, (std::vector<std::pair<std::uint64_t, std::uint64_t>>{{2, 101}, {3, 102}}));
}

TEST_F(RunningApplicationListTest, HasNoFrontmostProgramWithoutAnActiveWindowOfAnother) {
  EXPECT_EQ(list->frontmost(), nullptr);
  windows.active = 77; // one of our own is not in the list of windows
  EXPECT_EQ(list->frontmost(), nullptr);
}

TEST_F(RunningApplicationListTest, DrawsTheEntrysIconElseTheWindowsElseTheGenericOne) {
  install("a.desktop", "Name=A\nExec=/bin/sh -c x\nIcon=a-icon\n");
  loader.themeNames = {"a-icon"};
  const IdleProgram a(folder + "/a");
  const IdleProgram b(folder + "/b");
  windows.icons[2] = true;
  windows.open(window(1, a.processIdentifier(), "a"));
  windows.open(window(2, b.processIdentifier(), "unknown"));
  const auto applications = list->applications();
  EXPECT_EQ(applications[0]->icon()->representation(64, 64).width, 64);
  EXPECT_EQ(loader.calls, std::vector<std::string>{"theme a-icon 64"});
  EXPECT_EQ(applications[0]->icon()->size(), (Size{320, 320}));
  EXPECT_EQ(applications[1]->icon()->representation(64, 64).width, 64);
  EXPECT_EQ(loader.calls.size(), 1u) << "the window has a picture of its own";
  windows.changed();
  EXPECT_EQ(list->applications()[1]->icon(), applications[1]->icon());
  const IdleProgram c(folder + "/c");
  windows.open(window(3, c.processIdentifier(), "unknown too"));
  EXPECT_EQ(list->applications()[2]->icon()->representation(128, 128).width, 128);
  EXPECT_EQ(loader.calls.back(), "own fallback-application 128");
}

TEST_F(RunningApplicationListTest, DrawsTheIconOfAWindowThatIsStillOpen) {
  IdleProgram program(folder + "/a");
  const IdleProgram other(folder + "/b");
  windows.icons = {{2, true}};
  windows.open(window(1, program.processIdentifier(), "A")); // a splash window, without a picture
  const auto icon = list->applications().at(0)->icon();
  windows.open(window(2, program.processIdentifier(), "A"));
  windows.close(1);
  windows.open(window(1, other.processIdentifier(), "B")); // the number was given again
  windows.icons[1] = true;
  EXPECT_EQ(list->applications().at(0)->icon(), icon);
  icon->representation(64, 64);
  EXPECT_EQ(windows.iconsAsked, std::vector<std::uint64_t>{2});
}

TEST_F(RunningApplicationListTest, KeepsWhatItHasDrawnWhenTheProgramHasGone) {
  IdleProgram program(folder + "/a");
  windows.icons = {{1, true}};
  windows.open(window(1, program.processIdentifier(), "A"));
  const auto icon = list->applications().at(0)->icon();
  EXPECT_EQ(icon->representation(64, 64).width, 64);
  program.end();
  windows.close(1);
  EXPECT_EQ(icon->representation(128, 128).width, 64);
  EXPECT_EQ(windows.iconsAsked, std::vector<std::uint64_t>{1})
      << "the number may be another program's by now";
  EXPECT_TRUE(loader.calls.empty()) << "the generic picture is not the program's";
}

TEST_F(RunningApplicationListTest, TellsWhatOneInterpreterRunsApartByName) {
  const std::string java = folder + "/java";
  const IdleProgram editor(java);
  const IdleProgram game(std::vector<std::string>{java});
  const IdleProgram again(std::vector<std::string>{java});
  int calls = 0;
  const auto registration = list->observeChanges([&] { ++calls; });
  windows.open(window(1, editor.processIdentifier(), "Editor"));
  windows.open(window(2, again.processIdentifier(), "Editor"));
  const auto records = list->records();
  const auto icon = records[0]->icon();
  EXPECT_EQ(records[0]->bundlePath(), java);
  EXPECT_EQ(records[1]->bundlePath(), java) << "the same program twice";

  windows.open(window(3, game.processIdentifier(), "Game"));
  EXPECT_EQ(calls, 3);
  for (const auto& record : list->records())
    EXPECT_EQ(record->bundlePath(), std::nullopt) << record->localizedName();
  EXPECT_EQ(records[0]->executablePath(), java);
  EXPECT_EQ(records[0]->icon(), icon);
  windows.changed();
  windows.close(1);
  windows.close(2);
  EXPECT_EQ(calls, 5) << "when the two went, and at nothing else";
  EXPECT_EQ(list->records().at(0)->bundlePath(), std::nullopt) << "it does not change its name back";
}

TEST_F(RunningApplicationListTest, AnEntryNamesItsProgramWhateverElseRunsTheSameInterpreter) {
  const auto path = install("editor.desktop", "Name=Editor\nExec=/bin/sh -c x\nStartupWMClass=Editor\n");
  const IdleProgram editor(folder + "/java");
  const IdleProgram game(std::vector<std::string>{folder + "/java"});
  windows.open(window(1, editor.processIdentifier(), "Editor"));
  windows.open(window(2, game.processIdentifier(), "Game"));
  EXPECT_EQ(list->records()[0]->bundlePath(), path);
  EXPECT_EQ(list->records()[1]->bundlePath(), folder + "/java");
}

TEST_F(RunningApplicationListTest, ReadsAProcessNumberThatWasGivenAgainAsAnotherProgram) {
  IdleProgram first(folder + "/a");
  windows.open(window(1, first.processIdentifier(), "A"));
  const auto record = list->applications().at(0);
  const auto process = *list->records().at(0)->process();
  auto later = process;
  later.startTime += 1;
  const LinuxRunningApplication other(windows, later, "A");
  EXPECT_FALSE(record->isEqual(other));
  EXPECT_TRUE(other.isTerminated());
  const LinuxRunningApplication same(windows, process, "another name");
  EXPECT_TRUE(record->isEqual(same));
}

} // namespace
} // namespace orbel::linux
