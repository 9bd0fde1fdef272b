#include "backends/linux/Launcher.h"

#include "tests/backends/linux/FakeTopLevelWindows.h"
#include "tests/backends/linux/ProgramReport.h"
#include "tests/support/base/LogCapture.h"

#include <gtest/gtest.h>

#include <gio/gio.h>
#include <unistd.h>

#include <cstdlib>

namespace orbel::linux {
namespace {

bool hasLine(const std::string& text, const std::string& line) {
  return ("\n" + text).find("\n" + line + "\n") != std::string::npos;
}
bool hasVariable(const std::string& text, const std::string& name) {
  return ("\n" + text).find("\n" + name + "=") != std::string::npos;
}

pid_t sessionIn(const std::string& report) {
  const std::string mark = " session:";
  const auto place = report.find(mark);
  EXPECT_NE(place, std::string::npos);
  return place == std::string::npos ? ::getsid(0) : std::atoi(report.c_str() + place + mark.size());
}

class LauncherTest : public testing::Test {
protected:
  std::string entry(const std::string& lines) const {
    const std::string path = folder + "/some.desktop";
    DesktopSandbox::write(path, "[Desktop Entry]\nType=Application\nName=Some\n" + lines);
    return path;
  }

  const std::string folder = DesktopSandbox::shared().makeFolder();
  FakeTopLevelWindows windows;
  Launcher launcher{windows, {"ORBEL_PRIVATE"}};
};

TEST_F(LauncherTest, StartsAnEntryWithATokenInASessionOfItsOwn) {
  const ProgramReport program("reporter");
  const auto path = entry("Exec=reporter --mode %U\nStartupNotify=true\n");
  const auto started = launcher.launchEntry(path, {"file:///tmp/a%20b.txt", "https://example.org/"});
  EXPECT_TRUE(started) << started.cause();
  const std::string report = program.wait();
  EXPECT_TRUE(hasLine(report, "argument:--mode"));
  EXPECT_TRUE(hasLine(report, "argument:https://example.org/"));
  EXPECT_TRUE(hasLine(report, "DESKTOP_STARTUP_ID=start-1-Some")) << report;
  EXPECT_TRUE(hasLine(report, "XDG_ACTIVATION_TOKEN=start-1-Some"));
  EXPECT_EQ(launcher.entryStartedAs("start-1-Some"), path);
  EXPECT_EQ(launcher.entryStartedAs("another"), "");
  EXPECT_NE(sessionIn(report), ::getsid(0));
}

TEST_F(LauncherTest, TakesWhatConcernsOnlyOurProcessOutOfTheEnvironment) {
  ::setenv("ORBEL_PRIVATE", "1", 1);
  ::setenv("ORBEL_PUBLIC", "1", 1);
  ::setenv("DESKTOP_AUTOSTART_ID", "ours", 1);
  ::setenv("XDG_ACTIVATION_TOKEN", "ours", 1);
  windows.givesStartupIds = false;
  const ProgramReport first("first-reporter");
  const ProgramReport second("second-reporter");
  EXPECT_TRUE(launcher.launchEntry(entry("Exec=first-reporter\n"), {}));
  EXPECT_TRUE(launcher.launchExecutable(second.path, {}));
  for (const std::string& report : {first.wait(), second.wait()}) {
    EXPECT_TRUE(hasVariable(report, "ORBEL_PUBLIC"));
    EXPECT_FALSE(hasVariable(report, "ORBEL_PRIVATE"));
    EXPECT_FALSE(hasVariable(report, "DESKTOP_AUTOSTART_ID"));
    EXPECT_FALSE(hasVariable(report, "XDG_ACTIVATION_TOKEN"));
    EXPECT_FALSE(hasVariable(report, "DESKTOP_STARTUP_ID"));
  }
  for (const char* name : {"ORBEL_PRIVATE", "ORBEL_PUBLIC", "DESKTOP_AUTOSTART_ID", "XDG_ACTIVATION_TOKEN"}) {
    ::unsetenv(name);
  }
}

TEST_F(LauncherTest, StartsAProgramWithARelativePathInTheFolderOfTheEntry) {
  const ProgramReport program("relative-reporter");
  ASSERT_EQ(::symlink(program.path.c_str(), (folder + "/start it").c_str()), 0);
  const auto started = launcher.launchEntry(entry("Path=" + folder + "\nExec=\"./start it\" --mode %f\n"),
                                            {"file:///tmp/a%20b.txt"});
  EXPECT_TRUE(started) << started.cause();
  const std::string report = program.wait();
  EXPECT_TRUE(hasLine(report, "argument:--mode"));
  EXPECT_TRUE(hasLine(report, "argument:/tmp/a b.txt"));
  EXPECT_TRUE(hasLine(report, "PWD=" + folder)) << report;
}

TEST_F(LauncherTest, StartsAProgramThroughEnvWithOptions) {
  const ProgramReport program("env-reporter");
  const auto started = launcher.launchEntry(entry("Exec=env -u HOME ORBEL_MODE=1 env-reporter\n"), {});
  EXPECT_TRUE(started) << started.cause();
  const std::string report = program.wait();
  EXPECT_TRUE(hasLine(report, "ORBEL_MODE=1"));
  EXPECT_FALSE(hasVariable(report, "HOME"));
}

TEST_F(LauncherTest, GivesAnEntryForFilesTheFilesPath) {
  const ProgramReport program("file-reporter");
  EXPECT_TRUE(launcher.launchEntry(entry("Exec=file-reporter %f\n"), {"file:///tmp/a%20%25b.txt"}));
  EXPECT_TRUE(hasLine(program.wait(), "argument:/tmp/a %b.txt"));
}

TEST_F(LauncherTest, StartsATerminalEntryInATerminal) {
  const ProgramReport terminal("xterm");
  DesktopSandbox::shared().installProgram("console-program", "");
  // Only these programs exist, so that no other terminal is found first.
  const std::string path = std::getenv("PATH");
  ::setenv("PATH", (DesktopSandbox::shared().root() + "/bin").c_str(), 1);
  const auto started = launcher.launchEntry(entry("Exec=console-program --now\nTerminal=true\n"), {});
  EXPECT_TRUE(started) << started.cause();
  const std::string report = terminal.wait();
  ::setenv("PATH", path.c_str(), 1);
  EXPECT_TRUE(hasLine(report, "argument:console-program")) << report;
  EXPECT_TRUE(hasLine(report, "argument:--now"));
  ::unlink(terminal.path.c_str());
}

TEST_F(LauncherTest, SaysWhyAnEntryCannotBeStarted) {
  EXPECT_EQ(launcher.launchEntry(folder + "/gone.desktop", {}).cause(),
            folder + "/gone.desktop does not exist");
  EXPECT_EQ(launcher.launchEntry(entry(""), {}).cause(), folder + "/some.desktop names no program to start");
  EXPECT_EQ(launcher.launchEntry(entry("Exec=never-installed\n"), {}).cause(),
            "the program never-installed of " + folder +
                "/some.desktop is not installed or may not be executed");
  EXPECT_TRUE(windows.startupIds.empty());
}

TEST_F(LauncherTest, StartsAnExecutableInTheHomeFolderWithItsArguments) {
  const ProgramReport program("plain-reporter");
  const auto started = launcher.launchExecutable(program.path, {"/tmp/a b.txt"});
  EXPECT_TRUE(started) << started.cause();
  const std::string report = program.wait();
  EXPECT_TRUE(hasLine(report, "argument:/tmp/a b.txt"));
  EXPECT_TRUE(hasLine(report, "folder:" + DesktopSandbox::shared().root() + "/home"));
  EXPECT_TRUE(hasLine(report, "XDG_ACTIVATION_TOKEN=start-1-plain-reporter"));
  EXPECT_NE(sessionIn(report), ::getsid(0));
}

TEST_F(LauncherTest, SaysWhyAnExecutableCannotBeStarted) {
  const std::string path = folder + "/Tool.AppImage";
  EXPECT_EQ(launcher.launchExecutable(path, {}).cause(), path + " does not exist");
  DesktopSandbox::write(path, "x");
  EXPECT_EQ(launcher.launchExecutable(path, {}).cause(), path + " may not be executed");
  EXPECT_EQ(launcher.launchExecutable(folder, {}).cause(), folder + " may not be executed");
}

TEST_F(LauncherTest, RemembersOnlyTheLastStarts) {
  DesktopSandbox::shared().installProgram("quick", "");
  const auto path = entry("Exec=quick\n");
  for (int i = 0; i < 65; ++i)
    EXPECT_TRUE(launcher.launchEntry(path, {}));
  EXPECT_EQ(launcher.entryStartedAs("start-1-Some"), "");
  EXPECT_EQ(launcher.entryStartedAs("start-2-Some"), path);
  EXPECT_EQ(launcher.entryStartedAs("start-65-Some"), path);
}

TEST_F(LauncherTest, StartsTheProgramItselfWhenTheBusCannotStartIt) {
  GTestDBus* bus = g_test_dbus_new(G_TEST_DBUS_NONE);
  g_test_dbus_up(bus);
  {
    const ProgramReport program("bus-reporter");
    const auto path = DesktopSandbox::shared().installEntry(
        "org.example.OnBus.desktop", "Name=On Bus\nExec=bus-reporter %U\nDBusActivatable=true\n");
    EXPECT_TRUE(launcher.launchEntry(path, {"file:///tmp/a"}));
    EXPECT_FALSE(program.wait().empty());
    DesktopSandbox::shared().removeAllEntries();
  }
  g_test_dbus_down(bus);
  g_object_unref(bus);
}

TEST_F(LauncherTest, StartsAnEntryMeantForTheBusWithoutABus) {
  const ProgramReport program("busless-reporter");
  const auto path = DesktopSandbox::shared().installEntry(
      "org.example.Busless.desktop", "Name=Busless\nExec=busless-reporter %U\nDBusActivatable=true\n");
  EXPECT_TRUE(launcher.launchEntry(path, {}));
  EXPECT_FALSE(program.wait().empty());
  DesktopSandbox::shared().removeAllEntries();
}

} // namespace
} // namespace orbel::linux
