#include "backends/linux/ApplicationFinder.h"

#include "tests/backends/linux/FakeIconLoader.h"
#include "tests/backends/linux/FakeTopLevelWindows.h"
#include "tests/backends/linux/IdleProgram.h"
#include "tests/backends/linux/InstalledEntries.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace orbel::linux {
namespace {

class ApplicationFinderTest : public testing::Test {
protected:
  RunningApplicationPointer open(const IdleProgram& program, const std::string& className) {
    common::TopLevelWindow window;
    window.id = ++lastWindow;
    window.processIdentifier = program.processIdentifier();
    window.className = className;
    windows.open(window);
    return running.applications().back();
  }
  void expectFound(const std::string& nameOrPath, const RunningApplicationPointer& record,
                   const std::string& entry, const std::string& executable) const {
    const auto found = finder.find(nameOrPath);
    ASSERT_TRUE(found) << nameOrPath;
    EXPECT_EQ(found->running, record) << nameOrPath;
    EXPECT_EQ(found->entryPath, entry) << nameOrPath;
    EXPECT_EQ(found->executablePath, executable) << nameOrPath;
  }

  const std::string folder = DesktopSandbox::shared().makeFolder();
  std::uint64_t lastWindow = 0;
  FakeTopLevelWindows windows;
  FakeIconLoader loader;
  DesktopEntryIndex index;
  InstalledEntries entries{index};
  FileIcons icons{loader, index};
  RoleApplications roles{index};
  RunningApplicationList running{windows, index, icons, {}};
  ApplicationFinder finder{index, roles, running};
};

TEST_F(ApplicationFinderTest, FindsByTheNameOfARunningProgram) {
  const IdleProgram program(folder + "/paint");
  const auto record = open(program, "Paint");
  expectFound("Paint", record, "", folder + "/paint");
  EXPECT_FALSE(finder.find("paint"));
}

TEST_F(ApplicationFinderTest, FindsByTheNameOfAnInstalledEntry) {
  const auto path = entries.add("paint.desktop", "Name=Malen\nExec=/bin/sh -c x\n");
  expectFound("Malen", nullptr, path, "");
}

TEST_F(ApplicationFinderTest, FindsABuiltInNameByItsRoleAndItsRunningProgram) {
  IdleProgram program(folder + "/appfinder");
  const auto path =
      entries.add("xfce4-appfinder.desktop", "Name=Finder of Applications\nExec=" + folder + "/appfinder\n");
  ASSERT_TRUE(test::iterateUntil([&] { return roles.entry("Launchpad").has_value(); }));
  expectFound("Launchpad", nullptr, path, "");
  const auto record = open(program, "x");
  expectFound("Launchpad", record, path, "");
  EXPECT_FALSE(finder.find("Mail"));
}

TEST_F(ApplicationFinderTest, TakesAProgramOfThatVeryNameBeforeTheOneInTheRole) {
  const IdleProgram program(folder + "/mail");
  entries.add("mailer.desktop", "Name=Mailer\nExec=/bin/sh\nCategories=Email;\n");
  ASSERT_TRUE(test::iterateUntil([&] { return roles.entry("Mail").has_value(); }));
  const auto record = open(program, "Mail");
  expectFound("Mail", record, "", folder + "/mail");
}

TEST_F(ApplicationFinderTest, FindsByThePathOfAnEntryWhetherInstalledOrNot) {
  const IdleProgram program(folder + "/paint");
  const auto path = entries.add("paint.desktop", "Name=Paint\nExec=" + folder + "/paint\n");
  expectFound(path, nullptr, path, "");
  const auto record = open(program, "x");
  expectFound(path, record, path, "");
  expectFound(folder + "/elsewhere.desktop", nullptr, folder + "/elsewhere.desktop", "");
}

TEST_F(ApplicationFinderTest, FindsTheRunningRecordByThePathOfItsExecutableAlsoThroughALink) {
  const IdleProgram program(folder + "/paint");
  const auto record = open(program, "Paint");
  ASSERT_EQ(::symlink((folder + "/paint").c_str(), (folder + "/link").c_str()), 0);
  expectFound(folder + "/paint", record, "", folder + "/paint");
  expectFound(folder + "/link", record, "", folder + "/paint");
}

TEST_F(ApplicationFinderTest, SaysWhenAnExecutableRunsMoreThanOnce) {
  const IdleProgram first(folder + "/paint");
  const IdleProgram second(std::vector<std::string>{folder + "/paint"});
  const auto path = entries.add("paint.desktop", "Name=Paint\nExec=" + folder + "/paint\n");
  ASSERT_EQ(::symlink((folder + "/paint").c_str(), (folder + "/link").c_str()), 0);
  open(first, "x");
  EXPECT_FALSE(finder.find(folder + "/paint")->runsMoreThanOnce);
  open(second, "x");
  EXPECT_TRUE(finder.find(folder + "/paint")->runsMoreThanOnce);
  EXPECT_TRUE(finder.find(folder + "/link")->runsMoreThanOnce);
  for (const std::string& program : {path, std::string("Paint"), folder})
    EXPECT_FALSE(finder.find(program)->runsMoreThanOnce) << program << " means the program, not a process";
}

TEST_F(ApplicationFinderTest, FindsAProgramsRecordAfterItsFileWasRemoved) {
  const IdleProgram program(folder + "/paint");
  const auto record = open(program, "Paint");
  ::unlink((folder + "/paint").c_str());
  expectFound(folder + "/paint", record, "", "");
}

TEST_F(ApplicationFinderTest, FindsTheEntryOfAnExecutableThatDoesNotRun) {
  const std::string program = DesktopSandbox::shared().installProgram("sketch", "");
  const auto path = entries.add("sketch.desktop", "Name=Sketch\nExec=sketch %U\n");
  expectFound(program, nullptr, path, "");
}

TEST_F(ApplicationFinderTest, FindsTheProgramThatRunsOutOfAnApplicationFolder) {
  const IdleProgram program(folder + "/Tool.app/bin/tool");
  const auto record = open(program, "Tool");
  expectFound(folder + "/Tool.app", record, "", "");
  expectFound(folder + "/Tool.app/", record, "", "");
  EXPECT_FALSE(finder.find(folder + "/Tool.ap"));
}

TEST_F(ApplicationFinderTest, FindsNothingWhereThereIsNoApplication) {
  DesktopSandbox::write(folder + "/notes.apps/letter.txt", "x");
  for (const auto& path : {std::string(), folder + "/missing", folder, folder + "/notes.apps/letter.txt",
                           std::string("No Such IdleProgram")}) {
    EXPECT_FALSE(finder.find(path)) << path;
  }
}

TEST_F(ApplicationFinderTest, KnowsAppImagesByNameOrMark) {
  DesktopSandbox::write(folder + "/marked", std::string("\x7f"
                                                        "ELF\2\1\1\0AI\2rest",
                                                        16));
  DesktopSandbox::write(folder + "/plain", std::string("\x7f"
                                                       "ELF\2\1\1\0\0\0\0rest",
                                                       16));
  EXPECT_TRUE(ApplicationFinder::isAppImage(folder + "/marked"));
  EXPECT_FALSE(ApplicationFinder::isAppImage(folder + "/plain"));
  EXPECT_TRUE(ApplicationFinder::isAppImage("/gone/Tool.AppImage"));
  EXPECT_TRUE(ApplicationFinder::isAppImage("/gone/tool.appimage"));
  EXPECT_FALSE(ApplicationFinder::isAppImage(folder));
}

} // namespace
} // namespace orbel::linux
