#include "backends/linux/LinuxWorkspace.h"

#include "tests/backends/linux/FakeIconLoader.h"
#include "tests/backends/linux/FakeTopLevelWindows.h"
#include "tests/backends/linux/IdleProgram.h"
#include "tests/backends/linux/InstalledEntries.h"
#include "tests/backends/linux/ProgramReport.h"
#include "tests/support/base/LogCapture.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>

namespace orbel::linux {
namespace {

bool hasArgument(const std::string& report, const std::string& argument) {
  return report.find("argument:" + argument + "\n") != std::string::npos;
}

class LinuxWorkspaceTest : public testing::Test {
protected:
  // Handles the test's own content type and is its default.
  std::string installOpener(const std::string& identifier, const std::string& program) {
    auto path = entries.add(identifier, "Name=" + identifier + "\nExec=" + program +
                                            " %f\nMimeType=application/x-orbel-test;inode/directory;"
                                            "x-scheme-handler/orbel-test;\n");
    desktop.setDefaults("application/x-orbel-test=" + identifier + "\ninode/directory=" + identifier +
                        "\nx-scheme-handler/orbel-test=" + identifier + "\n");
    EXPECT_TRUE(test::iterateUntil([&] { return workspace.applicationForUrl("orbel-test:") == path; }));
    return path;
  }
  bool launches(const std::string& nameOrPath) {
    const auto launch = workspace.launchApplication(nameOrPath);
    return launch && *launch == Workspace::Launch::done;
  }
  void open(const IdleProgram& program, const std::string& className) {
    common::TopLevelWindow window;
    window.id = 1;
    window.processIdentifier = program.processIdentifier();
    window.className = className;
    windows.open(window);
  }

  DesktopSandbox& desktop = DesktopSandbox::shared();
  const std::string folder = desktop.makeFolder();
  const std::string document = folder + "/a b.orbeltest";
  FakeTopLevelWindows windows;
  FakeIconLoader icons;
  test::LogCapture log;
  DesktopEntryIndex index;
  InstalledEntries entries{index};
  LinuxWorkspace workspace{windows, icons};

  void SetUp() override { DesktopSandbox::write(document, "x"); }
};

TEST_F(LinuxWorkspaceTest, StartsAnApplicationOnceAndThenBringsItForward) {
  const ProgramReport reporter("workspace-reporter");
  const auto path =
      entries.add("tool.desktop", "Name=Tool\nExec=workspace-reporter\nStartupWMClass=ToolWindow\n");
  EXPECT_TRUE(workspace.launchApplicationAtPath(path));
  EXPECT_FALSE(reporter.wait().empty());
  const auto starts = windows.startupIds.size();

  const IdleProgram program(folder + "/tool");
  open(program, "ToolWindow");
  EXPECT_TRUE(workspace.launchApplicationAtPath(path));
  EXPECT_TRUE(launches("Tool"));
  EXPECT_TRUE(launches(folder + "/tool"));
  EXPECT_EQ(windows.activated, (std::vector<std::uint64_t>{1, 1, 1}));
  EXPECT_EQ(windows.startupIds.size(), starts);
}

TEST_F(LinuxWorkspaceTest, LeavesItToTheCallerWhichOfTwoProcessesOfAnExecutableIsMeant) {
  const IdleProgram first(folder + "/tool");
  const IdleProgram second(std::vector<std::string>{folder + "/tool"});
  open(first, "Tool");
  common::TopLevelWindow window;
  window.id = 2;
  window.processIdentifier = second.processIdentifier();
  windows.open(window);
  const auto launch = workspace.launchApplication(folder + "/tool");
  ASSERT_TRUE(launch) << launch.cause();
  EXPECT_EQ(*launch, Workspace::Launch::ambiguous);
  EXPECT_TRUE(windows.activated.empty());
  EXPECT_TRUE(windows.startupIds.empty());
  EXPECT_TRUE(log.lines.empty());
  windows.close(1);
  EXPECT_TRUE(launches(folder + "/tool"));
  EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{2});
}

TEST_F(LinuxWorkspaceTest, SaysWhyAnApplicationCannotBeStarted) {
  EXPECT_EQ(workspace.launchApplicationAtPath(folder + "/gone.desktop").cause(),
            folder + "/gone.desktop does not exist");
  EXPECT_EQ(workspace.launchApplication("No Such IdleProgram").cause(),
            "there is no application No Such IdleProgram");
  EXPECT_EQ(workspace.launchApplicationAtPath(folder + "/gone.app").cause(),
            folder + "/gone.app does not exist");
  EXPECT_TRUE(log.lines.empty()) << "whoever asked logs it";
}

TEST_F(LinuxWorkspaceTest, StartsAnAppImageAndOpensDocumentsWithIt) {
  const ProgramReport reporter("image-reporter");
  const std::string image = folder + "/Tool.AppImage";
  std::filesystem::copy_file(reporter.path, image);
  EXPECT_TRUE(workspace.openFileWithApplication(document, image));
  EXPECT_TRUE(hasArgument(reporter.wait(), document));
}

TEST_F(LinuxWorkspaceTest, OpensAFileWithItsDefaultApplication) {
  const ProgramReport reporter("default-reporter");
  const auto path = installOpener("opener.desktop", "default-reporter");
  EXPECT_EQ(workspace.defaultApplicationForFile(document), path);
  EXPECT_TRUE(workspace.openFile(document));
  EXPECT_TRUE(hasArgument(reporter.wait(), document));
}

TEST_F(LinuxWorkspaceTest, ListsTheDefaultFirstAmongTheApplicationsOfAFile) {
  const auto first = installOpener("first.desktop", "/bin/sh");
  const auto second = entries.add("second.desktop", "Name=2\nExec=/bin/sh %f\n");
  desktop.setDefaults("application/x-orbel-test=second.desktop;first.desktop\n");
  EXPECT_TRUE(test::iterateUntil([&] {
    return workspace.applicationsForFile(document) == std::vector<std::string>{second, first};
  }));
}

TEST_F(LinuxWorkspaceTest, OpensAFileWithAGivenApplicationEvenIfThatRuns) {
  const ProgramReport reporter("given-reporter");
  const auto path =
      entries.add("given.desktop", "Name=Given\nExec=given-reporter %f\nStartupWMClass=GivenWindow\n");
  const IdleProgram program(folder + "/given");
  open(program, "GivenWindow");
  EXPECT_TRUE(workspace.openFileWithApplication(document, path));
  EXPECT_TRUE(hasArgument(reporter.wait(), document));
  EXPECT_TRUE(windows.activated.empty());
}

TEST_F(LinuxWorkspaceTest, OpensAFileWithTheProgramInARole) {
  const ProgramReport reporter("role-reporter");
  entries.add("browser.desktop", "Name=B\nExec=role-reporter %f\nCategories=WebBrowser;\n");
  EXPECT_TRUE(
      test::iterateUntil([&] { return workspace.openFileWithApplication(document, "Safari").succeeded(); }));
  EXPECT_TRUE(hasArgument(reporter.wait(), document));
}

TEST_F(LinuxWorkspaceTest, SaysWhyAFileCannotBeOpened) {
  EXPECT_EQ(workspace.openFile(folder + "/missing").cause(), folder + "/missing does not exist");
  EXPECT_EQ(workspace.openFile(document).cause(), "no application opens " + document);
  EXPECT_EQ(workspace.openFileWithApplication(document, "No Such IdleProgram").cause(),
            "there is no application No Such IdleProgram to open " + document);
  EXPECT_TRUE(log.lines.empty()) << "whoever asked logs it";
  EXPECT_EQ(workspace.defaultApplicationForFile(folder + "/missing"), std::nullopt);
  EXPECT_TRUE(workspace.applicationsForFile(folder + "/missing").empty());
}

TEST_F(LinuxWorkspaceTest, ShowsAFolderWithTheFolderHandlerWhenThereIsNoBus) {
  const ProgramReport reporter("folder-reporter");
  installOpener("folders.desktop", "folder-reporter");
  EXPECT_TRUE(workspace.openFile(folder));
  EXPECT_TRUE(hasArgument(reporter.wait(), folder));
  EXPECT_EQ(workspace.showFolder(document).cause(), document + " is no folder");
}

TEST_F(LinuxWorkspaceTest, LogsAFolderThatNothingShowsItself) {
  desktop.setDefaults("");
  EXPECT_TRUE(test::iterateUntil([&] {
    return workspace.applicationsForFile(folder).empty() &&
           workspace.defaultApplicationForFile(folder) == std::nullopt;
  }));
  EXPECT_TRUE(workspace.showFolder(folder));
  EXPECT_TRUE(test::iterateUntil([&] { return log.count("no file manager shows " + folder) == 1; }));
}

TEST_F(LinuxWorkspaceTest, OpensWhatOnlyCountsAsAnApplicationAsAFile) {
  const ProgramReport reporter("named-reporter");
  installOpener("named.desktop", "named-reporter");
  const std::string path = folder + "/notes.apps/letter.orbeltest";
  DesktopSandbox::write(path, "x");
  EXPECT_TRUE(workspace.launchApplicationAtPath(path));
  EXPECT_TRUE(hasArgument(reporter.wait(), path));
}

TEST_F(LinuxWorkspaceTest, ShowsAFolderThatOnlyCountsAsAnApplication) {
  const ProgramReport reporter("app-folder-reporter");
  installOpener("app-folder.desktop", "app-folder-reporter");
  std::filesystem::create_directory(folder + "/notes.apps");
  EXPECT_TRUE(workspace.launchApplicationAtPath(folder + "/notes.apps"));
  EXPECT_TRUE(hasArgument(reporter.wait(), folder + "/notes.apps"));
}

TEST_F(LinuxWorkspaceTest, OpensAnAddressWithTheHandlerOfItsScheme) {
  const ProgramReport reporter("url-reporter");
  const auto path =
      entries.add("url.desktop", "Name=U\nExec=url-reporter %u\nMimeType=x-scheme-handler/orbel-other;\n");
  EXPECT_EQ(workspace.applicationForUrl("orbel-other:"), std::nullopt);
  EXPECT_EQ(workspace.openUrl("orbel-other:terminate/5").cause(),
            "no application opens the address orbel-other:terminate/5");
  desktop.setDefaults("x-scheme-handler/orbel-other=url.desktop\n");
  EXPECT_TRUE(test::iterateUntil([&] { return workspace.applicationForUrl("orbel-other:") == path; }));
  EXPECT_TRUE(workspace.openUrl("orbel-other:terminate/5"));
  EXPECT_TRUE(hasArgument(reporter.wait(), "orbel-other:terminate/5"));
  EXPECT_EQ(workspace.applicationForUrl("no scheme"), std::nullopt);
  EXPECT_EQ(workspace.applicationForUrl(""), std::nullopt);
}

TEST_F(LinuxWorkspaceTest, TellsFilesFromFoldersAndFollowsLinks) {
  using Kind = Workspace::FileKind;
  std::filesystem::create_symlink(folder, folder + "/link");
  std::filesystem::create_symlink(folder + "/nowhere", folder + "/dangling");
  EXPECT_EQ(workspace.fileKind(document), Kind::file);
  EXPECT_EQ(workspace.fileKind(folder), Kind::directory);
  EXPECT_EQ(workspace.fileKind(folder + "/link"), Kind::directory);
  EXPECT_EQ(workspace.fileKind(folder + "/dangling"), Kind::missing);
  EXPECT_EQ(workspace.fileKind(""), Kind::missing);
}

TEST_F(LinuxWorkspaceTest, ShowsAnEntrysNameElseTheFilesName) {
  const auto path = entries.add("malen.desktop", "Name=Paint\nName[de]=Malen\nExec=/bin/sh\n");
  EXPECT_TRUE(test::iterateUntil([&] { return workspace.displayName(path) == "Malen"; }));
  EXPECT_EQ(workspace.displayName(document), "a b.orbeltest");
  EXPECT_EQ(workspace.displayName(folder + "/gone.desktop"), "gone.desktop");
  EXPECT_EQ(workspace.displayName("/tmp/"), "tmp");
  EXPECT_EQ(workspace.displayName("/"), "/");
  EXPECT_EQ(workspace.displayName("/x/caf\xe9"), "caf\xef\xbf\xbd");
}

TEST_F(LinuxWorkspaceTest, KnowsWhichProgramPlaysARole) {
  const auto path =
      entries.add("mailer.desktop", "Name=Mailer\nExec=/bin/sh -c x\nCategories=Email;\nStartupWMClass=M\n");
  const IdleProgram program(folder + "/mailer");
  EXPECT_TRUE(test::iterateUntil([&] { return workspace.displayName(path) == "Mailer"; }));
  open(program, "M");
  const auto running = workspace.runningApplications();
  ASSERT_EQ(running.size(), 1u);
  EXPECT_TRUE(workspace.playsRole(*running[0], "Mail"));
  EXPECT_FALSE(workspace.playsRole(*running[0], "Safari"));
  EXPECT_FALSE(workspace.playsRole(*running[0], "Mailer"));
  EXPECT_TRUE(workspace.runsBundle(*running[0], path));
}

TEST_F(LinuxWorkspaceTest, BookmarksAndDrawsFiles) {
  const auto bookmark = workspace.makeBookmark(document);
  ASSERT_TRUE(bookmark) << bookmark.cause();
  const auto resolved = workspace.resolveBookmark(*bookmark);
  ASSERT_TRUE(resolved) << resolved.cause();
  EXPECT_EQ(resolved->path, document);
  EXPECT_EQ(workspace.iconForFile(document), workspace.iconForFile(document));
  EXPECT_TRUE(workspace.imageNamed("Finder"));
  EXPECT_EQ(workspace.imageNamed("Paint"), nullptr);
}

TEST_F(LinuxWorkspaceTest, MatchesTheWindowOfWhatItStartedByTheStartupIdentifier) {
  const ProgramReport reporter("started-reporter");
  const std::string path = folder + "/mine.desktop";
  DesktopSandbox::write(path, "[Desktop Entry]\nType=Application\nName=Mine\nExec=started-reporter\n");
  EXPECT_TRUE(workspace.launchApplicationAtPath(path));
  EXPECT_FALSE(reporter.wait().empty());
  const IdleProgram program(folder + "/whatever");
  common::TopLevelWindow window;
  window.id = 1;
  window.processIdentifier = program.processIdentifier();
  window.startupId = windows.startupIds.back();
  windows.open(window);
  EXPECT_EQ(workspace.runningApplications().at(0)->bundlePath(), path);
}

} // namespace
} // namespace orbel::linux
