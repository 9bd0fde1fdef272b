#include "backends/linux/FileManager.h"

#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/support/glib/MainLoop.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <signal.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel::linux {
namespace {

constexpr const char* kInterface = R"(<node><interface name="org.freedesktop.FileManager1">
  <method name="ShowFolders"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
</interface></node>)";

// A file manager on the private bus; may refuse.
class BusFileManager {
public:
  explicit BusFileManager(const char* address) {
    const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                         G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    m_connection = g_dbus_connection_new_for_address_sync(address, flags, nullptr, nullptr, nullptr);
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(kInterface, nullptr);
    static const GDBusInterfaceVTable functions{called, nullptr, nullptr, {}};
    g_dbus_connection_register_object(m_connection, "/org/freedesktop/FileManager1", node->interfaces[0],
                                      &functions, this, nullptr, nullptr);
    g_dbus_node_info_unref(node);
    GVariant* answer = g_dbus_connection_call_sync(
        m_connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", "org.freedesktop.FileManager1", 0), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
        nullptr, nullptr);
    if (answer) g_variant_unref(answer);
  }
  ~BusFileManager() {
    g_dbus_connection_close_sync(m_connection, nullptr, nullptr);
    g_object_unref(m_connection);
  }
  BusFileManager(const BusFileManager&) = delete;
  BusFileManager& operator=(const BusFileManager&) = delete;

  std::vector<std::string> shown; // "URI startup-id"
  bool refuses = false;

private:
  static void called(GDBusConnection*, const char*, const char*, const char*, const char*,
                     GVariant* parameters, GDBusMethodInvocation* invocation, gpointer data) {
    auto* self = static_cast<BusFileManager*>(data);
    const char** uris = nullptr;
    const char* startupId = nullptr;
    g_variant_get(parameters, "(^a&s&s)", &uris, &startupId);
    self->shown.push_back(std::string(uris[0]) + " " + startupId);
    g_free(uris);
    if (self->refuses) {
      g_dbus_method_invocation_return_error_literal(invocation, G_IO_ERROR, G_IO_ERROR_FAILED, "no");
    } else {
      g_dbus_method_invocation_return_value(invocation, nullptr);
    }
  }
  GDBusConnection* m_connection = nullptr;
};

class FileManagerTest : public testing::Test {
protected:
  // Before GLib remembers the folders of whoever runs the tests.
  FileManagerTest() { DesktopSandbox::shared(); }
  void startBus() {
    m_bus = g_test_dbus_new(G_TEST_DBUS_NONE);
    g_test_dbus_up(m_bus);
    address = g_test_dbus_get_bus_address(m_bus);
  }
  void TearDown() override {
    manager.reset();
    if (!m_bus) return;
    test::iterateWhatIsPending();
    g_test_dbus_stop(m_bus);
    g_object_unref(m_bus);
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
  }
  void makeManager() {
    manager.emplace([this](const std::string& path) { fallenBack.push_back(path); });
  }

  std::string address;
  std::vector<std::string> fallenBack;
  std::optional<FileManager> manager;

private:
  GTestDBus* m_bus = nullptr;
};

TEST_F(FileManagerTest, AsksTheFileManagerOnTheBus) {
  startBus();
  BusFileManager onBus(address.c_str());
  makeManager();
  manager->showFolder("/tmp/a b", "start-1");
  EXPECT_TRUE(onBus.shown.empty()) << "nothing waits for the answer";
  ASSERT_TRUE(test::iterateUntil([&] { return !onBus.shown.empty(); }));
  EXPECT_EQ(onBus.shown, std::vector<std::string>{"file:///tmp/a%20b start-1"});
  manager->showFolder("/tmp", "");
  ASSERT_TRUE(test::iterateUntil([&] { return onBus.shown.size() == 2; }));
  EXPECT_TRUE(fallenBack.empty());
}

TEST_F(FileManagerTest, FallsBackWhenNoFileManagerIsOnTheBus) {
  startBus();
  makeManager();
  manager->showFolder("/tmp", "");
  EXPECT_TRUE(test::iterateUntil([&] { return fallenBack == std::vector<std::string>{"/tmp"}; }));
}

TEST_F(FileManagerTest, FallsBackWhenTheFileManagerRefuses) {
  startBus();
  BusFileManager onBus(address.c_str());
  onBus.refuses = true;
  makeManager();
  manager->showFolder("/tmp", "");
  EXPECT_TRUE(test::iterateUntil([&] { return fallenBack == std::vector<std::string>{"/tmp"}; }));
}

TEST_F(FileManagerTest, FallsBackAtOnceWithoutASessionBus) {
  makeManager();
  manager->showFolder("/tmp", "");
  EXPECT_EQ(fallenBack, std::vector<std::string>{"/tmp"});
}

TEST_F(FileManagerTest, FallsBackWhenTheBusDoesNotAnswer) {
  ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus", 1);
  makeManager();
  manager->showFolder("/tmp", "");
  EXPECT_TRUE(test::iterateUntil([&] { return fallenBack == std::vector<std::string>{"/tmp"}; }));
  ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

TEST_F(FileManagerTest, MayGoWhileAFolderIsBeingShown) {
  startBus();
  makeManager();
  manager->showFolder("/tmp", "");
  manager.reset();
  // The same calls by another manager come back after the abandoned ones.
  makeManager();
  manager->showFolder("/", "");
  EXPECT_TRUE(test::iterateUntil([&] { return !fallenBack.empty(); }));
  EXPECT_EQ(fallenBack, std::vector<std::string>{"/"});
}

TEST_F(FileManagerTest, OutlivesTheBusAndFallsBackThen) {
  startBus();
  makeManager();
  manager->showFolder("/tmp", "");
  ASSERT_TRUE(test::iterateUntil([&] { return fallenBack.size() == 1; }));
  // Ends the bus under the connection; whether the process outlives it shows by the test going on.
  GPid bus = 0;
  {
    const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                         G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GDBusConnection* own =
        g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr);
    GVariant* answer = g_dbus_connection_call_sync(own, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                   "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                                                   g_variant_new("(s)", "org.freedesktop.DBus"), nullptr,
                                                   G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    ASSERT_NE(answer, nullptr);
    guint32 process = 0;
    g_variant_get(answer, "(u)", &process);
    bus = static_cast<GPid>(process);
    g_variant_unref(answer);
    g_object_unref(own);
  }
  ASSERT_GT(bus, 1);
  ASSERT_EQ(::kill(bus, SIGTERM), 0);
  ASSERT_TRUE(test::iterateUntil([&] {
    fallenBack.clear();
    manager->showFolder("/tmp", "");
    return test::iterateUntil([&] { return !fallenBack.empty(); });
  }));
}

} // namespace
} // namespace orbel::linux
