#include "backends/common/SessionBus.h"

#include "tests/backends/linux/DesktopSandbox.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

namespace orbel::linux {
namespace {

constexpr const char* kAddress = "DBUS_SESSION_BUS_ADDRESS";

class SessionBusTest : public testing::Test {
protected:
  SessionBusTest() {
    if (const char* address = ::getenv(kAddress)) m_earlier = address;
    ::unsetenv(kAddress);
  }
  void SetUp() override {
    // Never that of whoever runs the tests.
    ASSERT_TRUE(socket.starts_with(DesktopSandbox::shared().root() + "/")) << socket;
    ::unlink(socket.c_str());
  }
  ~SessionBusTest() override {
    if (!HasFatalFailure()) ::unlink(socket.c_str());
    if (m_earlier) {
      ::setenv(kAddress, m_earlier->c_str(), 1);
    } else {
      ::unsetenv(kAddress);
    }
  }

  DesktopSandbox& desktop = DesktopSandbox::shared(); // before GLib remembers the folder
  const std::string socket = std::string(g_get_user_runtime_dir()) + "/bus";

private:
  std::optional<std::string> m_earlier;
};

TEST_F(SessionBusTest, IsNotThereWithoutAddressAndSocket) {
  EXPECT_FALSE(common::SessionBus::isThere());
  ::setenv(kAddress, "", 1);
  EXPECT_FALSE(common::SessionBus::isThere());
  DesktopSandbox::write(socket, "a file is no bus");
  EXPECT_FALSE(common::SessionBus::isThere());
}

TEST_F(SessionBusTest, IsThereWhereTheEnvironmentNamesIt) {
  ::setenv(kAddress, "unix:path=/somewhere", 1);
  EXPECT_TRUE(common::SessionBus::isThere());
}

TEST_F(SessionBusTest, IsThereWhereTheRuntimeFolderHasItsSocket) {
  const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(socket.size(), sizeof address.sun_path);
  std::strcpy(address.sun_path, socket.c_str());
  ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_TRUE(common::SessionBus::isThere());
  ::close(listener);
}

} // namespace
} // namespace orbel::linux
