#include "backends/linux/LinuxLoginItem.h"

#include "backends/linux/GlibPointers.h"
#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/support/base/LogCapture.h"
#include "tests/support/base/OtherUser.h"
#include "tests/support/glib/MainLoop.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace orbel::linux {
namespace {

namespace fs = std::filesystem;
using State = LoginItem::State;

class LinuxLoginItemTest : public testing::Test {
protected:
  std::string content() const {
    std::ifstream file(entry.path());
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
  }
  void write(const std::string& text) const {
    fs::create_directories(fs::path(entry.path()).parent_path());
    DesktopSandbox::write(entry.path(), text);
  }
  std::string value(const char* key) const {
    GlibKeyFile keys(g_key_file_new());
    g_key_file_load_from_file(keys.get(), entry.path().c_str(), G_KEY_FILE_NONE, nullptr);
    return takeText(g_key_file_get_string(keys.get(), "Desktop Entry", key, nullptr));
  }
  // What the desktop would run, by GLib's own reading of the entry.
  static std::vector<std::string> commandOf(const std::string& exec) {
    gchar** words = nullptr;
    if (!g_shell_parse_argv(exec.c_str(), nullptr, &words, nullptr)) return {};
    std::vector<std::string> command;
    for (gchar** word = words; *word; ++word)
      command.emplace_back(*word);
    g_strfreev(words);
    return command;
  }

  const std::string folder = DesktopSandbox::shared().makeFolder();
  const std::string state = DesktopSandbox::shared().makeFolder();
  LinuxLoginItem entry{folder, state, "/opt/orbel/bin/orbelmenu"};
  test::LogCapture log;
};

TEST_F(LinuxLoginItemTest, NothingIsRegisteredAtFirst) {
  EXPECT_EQ(entry.path(), folder + "/autostart/org.orbelmenu.OrbelMenu.desktop");
  EXPECT_EQ(entry.state().value(), State::undecided);
  EXPECT_FALSE(fs::exists(folder + "/autostart"));
  EXPECT_TRUE(fs::is_empty(state));
}

TEST_F(LinuxLoginItemTest, AnEntryThatWasRemovedFromOutsideIsToldFromOneThatNeverWas) {
  ASSERT_TRUE(entry.setRegistered(true));
  fs::remove(entry.path());
  EXPECT_EQ(entry.state().value(), State::notRegistered);
  EXPECT_EQ(LinuxLoginItem(folder, state, "/usr/bin/orbelmenu").state().value(), State::notRegistered)
      << "next time";
  const auto otherMachine = DesktopSandbox::shared().makeFolder();
  EXPECT_EQ(LinuxLoginItem(folder, otherMachine, "/usr/bin/orbelmenu").state().value(), State::undecided);
  ASSERT_TRUE(entry.setRegistered(false));
  EXPECT_EQ(entry.state().value(), State::undecided) << "it was taken back here";
}

TEST_F(LinuxLoginItemTest, WhereTheRegistrationCannotBeRememberedTheRunningProgramStillKnowsIt) {
  DesktopSandbox::write(state + "/orbelmenu", "a file where the folder belongs");
  EXPECT_TRUE(entry.setRegistered(true));
  EXPECT_EQ(log.count("will come back"), 1);
  fs::remove(entry.path());
  EXPECT_EQ(entry.state().value(), State::notRegistered);
}

TEST_F(LinuxLoginItemTest, RegisteringWritesAnEntryThatRunsTheProgram) {
  EXPECT_TRUE(entry.setRegistered(true));
  EXPECT_EQ(entry.state().value(), State::registered);
  EXPECT_EQ(value("Type"), "Application");
  EXPECT_EQ(value("Name"), "Orbel Menu");
  EXPECT_EQ(value("Exec"), "/opt/orbel/bin/orbelmenu");
  EXPECT_EQ(value("TryExec"), "/opt/orbel/bin/orbelmenu");
  EXPECT_EQ(value("X-GNOME-Autostart-enabled"), "true");
  // Nothing else, such as a temporary file, stays in the folder.
  EXPECT_EQ(std::distance(fs::directory_iterator(folder + "/autostart"), fs::directory_iterator()), 1);
}

TEST_F(LinuxLoginItemTest, UnregisteringRemovesTheEntryAndAgainIsHarmless) {
  ASSERT_TRUE(entry.setRegistered(true));
  EXPECT_TRUE(entry.setRegistered(false));
  EXPECT_FALSE(fs::exists(entry.path()));
  EXPECT_NE(entry.state().value(), State::registered);
  EXPECT_TRUE(entry.setRegistered(false));
}

TEST_F(LinuxLoginItemTest, RegisteringAgainFollowsAProgramThatHasMoved) {
  ASSERT_TRUE(entry.setRegistered(true));
  LinuxLoginItem moved(folder, state, "/usr/bin/orbelmenu");
  EXPECT_EQ(moved.state().value(), State::registered);
  EXPECT_TRUE(moved.setRegistered(true));
  EXPECT_EQ(value("Exec"), "/usr/bin/orbelmenu");
}

TEST_F(LinuxLoginItemTest, AnEntryThatIsRightAlreadyIsNotWrittenAgain) {
  ASSERT_TRUE(entry.setRegistered(true));
  const auto before = fs::last_write_time(entry.path()) - std::chrono::hours(1);
  fs::last_write_time(entry.path(), before);
  EXPECT_TRUE(entry.setRegistered(true));
  EXPECT_EQ(fs::last_write_time(entry.path()), before);
}

TEST_F(LinuxLoginItemTest, AnEntryThatTheDesktopHasSwitchedOffIsNotRegistered) {
  for (const std::string off : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
    write("[Desktop Entry]\nType=Application\nName=Orbel Menu\nExec=/opt/orbel/bin/orbelmenu\n" + off);
    EXPECT_EQ(entry.state().value(), State::notRegistered) << off;
    EXPECT_TRUE(entry.setRegistered(true));
    EXPECT_EQ(entry.state().value(), State::registered) << off;
  }
}

TEST_F(LinuxLoginItemTest, WhatOthersAddedToTheEntryIsKept) {
  write("# mine\n[Desktop Entry]\nType=Application\nName=Menu\nName[de]=Menü\nExec=/old\nHidden=true\n"
        "X-GNOME-Autostart-Delay=5\nOnlyShowIn=XFCE;\n");
  EXPECT_TRUE(entry.setRegistered(true));
  const std::string text = content();
  for (const std::string kept :
       {"# mine", "Name=Menu", "Name[de]=Menü", "X-GNOME-Autostart-Delay=5", "OnlyShowIn=XFCE;"})
    EXPECT_NE(text.find(kept), std::string::npos) << kept << " in\n" << text;
  EXPECT_EQ(value("Exec"), "/opt/orbel/bin/orbelmenu");
}

TEST_F(LinuxLoginItemTest, ABrokenEntryIsNotRegisteredAndReplaced) {
  for (const std::string broken :
       {"", "\0\x01\xff", "[Desktop Action x]\nExec=x\n", "[Desktop Entry]\nType=Application\n"}) {
    write(broken);
    EXPECT_EQ(entry.state().value(), State::notRegistered) << broken;
    EXPECT_TRUE(entry.setRegistered(true));
    EXPECT_EQ(value("Exec"), "/opt/orbel/bin/orbelmenu");
  }
}

TEST_F(LinuxLoginItemTest, AnEntryThatIsALinkIsWrittenWhereItLeadsAndRemovedWhereItStands) {
  const std::string elsewhere = folder + "/mine.desktop";
  fs::create_directories(folder + "/autostart");
  fs::create_symlink(elsewhere, entry.path());
  EXPECT_TRUE(entry.setRegistered(true));
  EXPECT_TRUE(fs::is_symlink(entry.path()));
  EXPECT_TRUE(fs::is_regular_file(elsewhere));
  EXPECT_TRUE(entry.setRegistered(false));
  EXPECT_FALSE(fs::exists(fs::symlink_status(entry.path())));
  EXPECT_TRUE(fs::exists(elsewhere));
}

TEST_F(LinuxLoginItemTest, AFolderThatCannotBeWrittenIsToldAndLeavesEverythingAsItWas) {
  EXPECT_TRUE(test::passesAsOtherUser([&] {
    const std::string locked = folder + "/locked";
    const auto lock = [&] {
      fs::permissions(locked + "/autostart", fs::perms::owner_read | fs::perms::owner_exec);
    };
    const auto unlock = [&] { fs::permissions(locked + "/autostart", fs::perms::owner_all); };
    fs::create_directories(locked + "/autostart");
    lock();
    LinuxLoginItem refused(locked, locked + "/state", "/usr/bin/orbelmenu");
    EXPECT_EQ(refused.setRegistered(true).cause(),
              "the program cannot be started at login: Permission denied");
    EXPECT_EQ(refused.state().value(), State::undecided);
    EXPECT_TRUE(fs::is_empty(locked + "/autostart"));
    unlock();
    EXPECT_TRUE(refused.setRegistered(true));
    lock();
    EXPECT_TRUE(refused.setRegistered(false).cause().starts_with(
        "the program cannot be kept from starting at login: "));
    EXPECT_EQ(refused.state().value(), State::registered);
    unlock();
  }));
}

TEST_F(LinuxLoginItemTest, AFileInThePlaceOfTheFolderIsToldToo) {
  DesktopSandbox::write(folder + "/autostart", "");
  EXPECT_TRUE(entry.setRegistered(true).cause().starts_with("the program cannot be started at login: "));
  EXPECT_EQ(entry.state().value(), State::undecided);
}

TEST_F(LinuxLoginItemTest, AnEntryThatCannotBeReadSaysWhy) {
  fs::create_directories(entry.path());
  EXPECT_EQ(entry.state().cause(), "the autostart entry cannot be read: it is not an ordinary file");
  EXPECT_FALSE(entry.setRegistered(true));
  EXPECT_TRUE(fs::is_directory(entry.path()));
}

TEST_F(LinuxLoginItemTest, PathsThatNeedItAreQuoted) {
  EXPECT_EQ(LinuxLoginItem::execWord("/usr/bin/orbelmenu"), "/usr/bin/orbelmenu");
  EXPECT_EQ(LinuxLoginItem::execWord("/my programs/100%/orbelmenu"), "\"/my programs/100%%/orbelmenu\"");
  const std::string awkward = "/a b/\"c\"/$d/`e`/f\\g/'h'/orbelmenu";
  EXPECT_EQ(commandOf(LinuxLoginItem::execWord(awkward)), std::vector<std::string>{awkward});
  LinuxLoginItem other(folder, state, awkward);
  EXPECT_TRUE(other.setRegistered(true));
  EXPECT_EQ(commandOf(value("Exec")), std::vector<std::string>{awkward});
}

TEST_F(LinuxLoginItemTest, APathThatNoEntryCanNameOrNoneIsRefused) {
  EXPECT_FALSE(LinuxLoginItem(folder, state, "").setRegistered(true));
  EXPECT_FALSE(LinuxLoginItem(folder, state, "/a\nExec=/bin/evil").setRegistered(true));
  EXPECT_FALSE(fs::exists(entry.path()));
}

TEST_F(LinuxLoginItemTest, ChangesFromOutsideAreToldAlsoWhereTheFolderComesLater) {
  const std::string above = folder + "/not/yet";
  LinuxLoginItem watched(above, state, "/usr/bin/orbelmenu");
  LinuxLoginItem writer(above, state, "/usr/bin/orbelmenu");
  std::vector<State> seen;
  const auto observation = watched.observeChanges([&] { seen.push_back(watched.state().value()); });
  const auto sees = [&](State expected) {
    return test::iterateUntil([&] { return !seen.empty() && seen.back() == expected; });
  };
  ASSERT_TRUE(writer.setRegistered(true));
  EXPECT_TRUE(sees(State::registered));
  for (const std::string& gone : {watched.path(), above + "/autostart", above, folder + "/not"}) {
    fs::remove_all(gone);
    EXPECT_TRUE(sees(State::notRegistered)) << gone;
    ASSERT_TRUE(writer.setRegistered(true));
    EXPECT_TRUE(sees(State::registered)) << gone;
  }
}

TEST_F(LinuxLoginItemTest, AFolderThatCannotBeWatchedUntilItIsOpenedIsWatchedThen) {
  EXPECT_TRUE(test::passesAsOtherUser([&] {
    const std::string locked = folder + "/locked";
    fs::create_directories(locked + "/autostart");
    fs::permissions(locked + "/autostart", fs::perms::none);
    LinuxLoginItem watched(locked, locked + "/state", "/usr/bin/orbelmenu");
    int changes = 0;
    const auto observation = watched.observeChanges([&] { ++changes; });
    fs::permissions(locked + "/autostart", fs::perms::owner_all);
    EXPECT_TRUE(test::iterateUntil([&] { return changes > 0; }));
    changes = 0;
    DesktopSandbox::write(watched.path(), "[Desktop Entry]\nType=Application\nExec=x\n");
    EXPECT_TRUE(test::iterateUntil([&] { return changes > 0; }));
    EXPECT_EQ(watched.state().value(), State::registered);
  }));
}

TEST_F(LinuxLoginItemTest, TheRunningProgramKnowsItsFile) {
  EXPECT_EQ(LinuxLoginItem::ownExecutable(), fs::read_symlink("/proc/self/exe").string());
}

} // namespace
} // namespace orbel::linux
