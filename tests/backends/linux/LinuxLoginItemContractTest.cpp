// The login item's contract on an autostart folder of the test's own.
#include "backends/linux/LinuxLoginItem.h"
#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/contracts/LoginItemContract.h"
#include "tests/support/glib/MainLoop.h"

#include <filesystem>

namespace orbel::contracts {
namespace {

class LinuxLoginItemSubject {
public:
  LoginItem& item() { return m_entry; }
  void switchWithTheDesktopsTools(bool registered) {
    const std::filesystem::path path = m_entry.path();
    if (registered) {
      std::filesystem::create_directories(path.parent_path());
      linux::DesktopSandbox::write(path, "[Desktop Entry]\nType=Application\nExec=/usr/bin/orbelmenu\n");
    } else {
      std::filesystem::remove(path);
    }
    EXPECT_TRUE(test::iterateUntil([&] { return m_isRegistered == registered; }));
  }
  void makeUnreadable() { std::filesystem::create_directories(m_entry.path()); }
  // A file where the folder belongs.
  void refuseRegistrations() { linux::DesktopSandbox::write(m_folder + "/autostart", ""); }

private:
  const std::string m_folder = linux::DesktopSandbox::shared().makeFolder();
  const std::string m_state = linux::DesktopSandbox::shared().makeFolder();
  linux::LinuxLoginItem m_entry{m_folder, m_state, "/usr/bin/orbelmenu"};
  std::optional<bool> m_isRegistered; // as reported
  Registration m_observation = m_entry.observeChanges([this] {
    const auto state = m_entry.state();
    m_isRegistered = state && *state == LoginItem::State::registered;
  });
};

INSTANTIATE_TYPED_TEST_SUITE_P(LinuxLoginItemContract, LoginItemContract, LinuxLoginItemSubject);

} // namespace
} // namespace orbel::contracts
