#include "backends/evdev/TouchpadAccess.h"

#include "backends/evdev/TouchpadTap.h"
#include "tests/support/touchpad/TouchpadTest.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace orbel::test {
namespace {

// While it lives, this process may open no device: permissions do not bind root.
class WithoutAccess {
public:
  explicit WithoutAccess(const TestTouchpad& pad) : m_path(pad.path()) {
    chmod(m_path.c_str(), 0);
    if (m_user == 0) m_isChanged = seteuid(kNobody) == 0;
  }
  ~WithoutAccess() {
    if (m_isChanged && seteuid(m_user) != 0) std::abort();
    chmod(m_path.c_str(), S_IRUSR | S_IWUSR);
  }
  WithoutAccess(const WithoutAccess&) = delete;
  WithoutAccess& operator=(const WithoutAccess&) = delete;

private:
  static constexpr uid_t kNobody = 65534;

  std::string m_path;
  uid_t m_user = geteuid();
  bool m_isChanged = false;
};

class TouchpadAccessTest : public TouchpadTest {};

TEST_F(TouchpadAccessTest, WithoutATouchpadNothingIsMissing) {
  EXPECT_TRUE(evdev::TouchpadAccess::check());
}

TEST_F(TouchpadAccessTest, ATouchpadThatCanBeReadIsNotNamed) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  EXPECT_TRUE(evdev::TouchpadAccess::check());
}

TEST_F(TouchpadAccessTest, ATouchpadThatMayNotBeReadIsNamedWithTheCause) {
  TestTouchpad pad(testbed(), {.name = "Locked"});
  pad.plugIn();
  openTestbedToOthers();
  const WithoutAccess none(pad);
  EXPECT_EQ(evdev::TouchpadAccess::check().cause(),
            "the touchpad \"Locked\" (/dev/input/event5): Permission denied");
}

TEST_F(TouchpadAccessTest, TheTapTriesAgainWhenTheAccessRightsChange) {
  TestTouchpad pad(testbed(), {.name = "Locked"});
  pad.plugIn();
  std::vector<Touch> touches;
  evdev::TouchpadTap tap({[&](const std::vector<Touch>& told) { touches = told; }, [] {}});
  openTestbedToOthers();
  {
    const WithoutAccess none(pad);
    tap.setEnabled(true);
    EXPECT_TRUE(hasLogged("\"Locked\" (/dev/input/event5) gives no gestures: Permission denied"));
  }
  pad.announceChange();
  int trackingId = 0;
  const auto isHeard = [&] {
    pad.put(0, ++trackingId, 0.5, 0.5);
    pad.frame();
    return !touches.empty();
  };
  EXPECT_TRUE(iterateUntil(isHeard));
}

// The command that is shown to the user.

class GrantingCommandTest : public testing::Test {
protected:
  ~GrantingCommandTest() override { std::filesystem::remove_all(m_folder); }
  // A folder with the program and the script in it; the program's path.
  std::string install(const std::string& folder) {
    std::filesystem::create_directories(m_folder / folder);
    std::ofstream(m_folder / folder / "orbelmenu-touchpad-access") << "#!/bin/sh\n";
    return (m_folder / folder / "orbelmenu").string();
  }
  std::filesystem::path m_folder = temporaryFolder();

private:
  static std::filesystem::path temporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "orbel-access-XXXXXX").string();
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    return name;
  }
};

// Whatever sudo takes for its path.
TEST_F(GrantingCommandTest, NamesTheScriptBesideTheProgramByItsWholePath) {
  EXPECT_EQ(evdev::TouchpadAccess::grantingCommand(install("bin")),
            "sudo " + m_folder.string() + "/bin/orbelmenu-touchpad-access");
}

TEST_F(GrantingCommandTest, IsOneThatAShellUnderstandsWhateverThePath) {
  EXPECT_EQ(evdev::TouchpadAccess::grantingCommand(install("Ann's programs/bin")),
            "sudo '" + m_folder.string() + "/Ann'\\''s programs/bin/orbelmenu-touchpad-access'");
}

TEST_F(GrantingCommandTest, IsTheBareNameWhereSudoFindsIt) {
  for (const char* folder : {"/usr/bin", "/usr/local/bin"})
    EXPECT_EQ(evdev::TouchpadAccess::grantingCommand(std::string(folder) + "/orbelmenu"),
              "sudo orbelmenu-touchpad-access");
}

TEST_F(GrantingCommandTest, IsTheBareNameWhereTheScriptIsUnknown) {
  EXPECT_EQ(evdev::TouchpadAccess::grantingCommand(m_folder.string() + "/orbelmenu"),
            "sudo orbelmenu-touchpad-access");
  EXPECT_EQ(evdev::TouchpadAccess::grantingCommand(""), "sudo orbelmenu-touchpad-access");
}

} // namespace
} // namespace orbel::test
