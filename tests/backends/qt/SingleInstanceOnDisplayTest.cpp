// Against a real session bus; the callers are programs of their own, as they are on a desktop.
#include "backends/qt/session/SingleInstance.h"

#include "tests/backends/qt/TestDisplay.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/support/base/ChildProcess.h"
#include "tests/support/base/LogCapture.h"
#include "tests/support/base/TemporaryDirectory.h"
#include "tests/support/base/TextFile.h"

#include <gtest/gtest.h>

#include <string>

namespace orbel::qt {
namespace {

class SingleInstanceOnDisplay : public testing::Test {
protected:
  void SetUp() override {
    if (!testDisplay()) FAIL() << "needs the round with a display";
    m_environment = testDisplay()->environment();
    m_environment["DBUS_SESSION_BUS_ADDRESS"] = m_address;
    m_bus.emplace(m_environment, m_folder.path() / "services", m_address, m_folder.path() / "bus.log");
  }
  void TearDown() override {
    if (testDisplay()) QDBusConnection::disconnectFromBus(connectionName());
  }

  static QString connectionName() { return QStringLiteral("test"); }
  QDBusConnection connection() const {
    return QDBusConnection::connectToBus(QString::fromStdString(m_address), connectionName());
  }
  SingleInstance::Handlers recordingHandlers() {
    return {.activate = [this] { m_calls += "activate "; },
            .show = [this] { m_calls += "show "; },
            .hide = [this] { m_calls += "hide "; },
            .settings = [this] { m_calls += "settings "; },
            .quit = [this] { m_calls += "quit "; }};
  }
  // Runs a program while the handlers can be reached; its exit status, its output in m_output.
  int run(std::vector<std::string> command) {
    const auto output = m_folder.path() / ("output" + std::to_string(++m_runs));
    test::ChildProcess process({.command = std::move(command),
                                .environment = m_environment,
                                .log = m_folder.path() / "errors",
                                .output = output,
                                .folder = {},
                                .handedDescriptor = -1});
    EXPECT_TRUE(becomesTrue([&] { return !process.isRunning(); }, "the program ends"));
    m_output.clear();
    for (const std::string& line : test::readLines(output))
      m_output += line;
    return process.exitStatus().value_or(-1);
  }
  int gapplication(const std::string& verb, const std::string& argument = {}) {
    std::vector<std::string> command{"gapplication", verb, SingleInstance::kServiceName};
    if (!argument.empty()) command.push_back(argument);
    return run(std::move(command));
  }
  bool called(const std::string& calls) { return m_calls == calls; }

  test::TemporaryDirectory m_folder{"orbel-bus"};
  std::string m_address = "unix:path=" + (m_folder.path() / "bus").string();
  test::Environment m_environment;
  std::optional<test::SessionBus> m_bus;
  test::LogCapture m_log;
  std::string m_calls;
  std::string m_output;
  int m_runs = 0;
};

TEST_F(SingleInstanceOnDisplay, ServesTheActionsThatTheDesktopCanBindToKeys) {
  SingleInstance instance(recordingHandlers(), connection());
  ASSERT_EQ(instance.start(), SingleInstance::Role::first);
  std::string expected;
  for (const std::string action : {"show", "hide", "settings", "quit"}) {
    EXPECT_EQ(gapplication("action", action), 0);
    expected += action + " ";
    EXPECT_TRUE(becomesTrue([&] { return called(expected); }, action));
  }
  EXPECT_EQ(gapplication("launch"), 0);
  EXPECT_TRUE(becomesTrue([&] { return called(expected + "activate "); }, "activate"));
}

TEST_F(SingleInstanceOnDisplay, IsActivatedByARequestToOpenSomething) {
  SingleInstance instance(recordingHandlers(), connection());
  ASSERT_EQ(instance.start(), SingleInstance::Role::first);
  EXPECT_EQ(gapplication("launch", "/etc/hosts"), 0);
  EXPECT_TRUE(becomesTrue([&] { return called("activate "); }, "activate"));
}

TEST_F(SingleInstanceOnDisplay, ASecondStartActivatesTheFirstAndEndsWell) {
  SingleInstance instance(recordingHandlers(), connection());
  ASSERT_EQ(instance.start(), SingleInstance::Role::first);
  EXPECT_EQ(run({ORBEL_SECOND_START}), 0);
  EXPECT_EQ(m_output, "second");
  EXPECT_TRUE(becomesTrue([&] { return called("activate "); }, "activate"));
}

TEST_F(SingleInstanceOnDisplay, TheNameIsFreeAgainWhenTheFirstHasGone) {
  {
    SingleInstance instance({}, connection());
    ASSERT_EQ(instance.start(), SingleInstance::Role::first);
  }
  EXPECT_EQ(run({ORBEL_SECOND_START}), 0);
  EXPECT_EQ(m_output, "first");
}

TEST_F(SingleInstanceOnDisplay, RefusesUnknownActionsAndWrongArguments) {
  SingleInstance instance(recordingHandlers(), connection());
  ASSERT_EQ(instance.start(), SingleInstance::Role::first);
  const auto call = [&](const std::string& method, const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"gdbus",
                                     "call",
                                     "--session",
                                     "--dest",
                                     SingleInstance::kServiceName,
                                     "--object-path",
                                     SingleInstance::kObjectPath,
                                     "--method",
                                     "org.freedesktop.Application." + method};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run(std::move(command));
  };
  EXPECT_NE(call("ActivateAction", {"explode", "[]", "{}"}), 0);
  EXPECT_TRUE(m_log.has("explode"));
  EXPECT_NE(call("ActivateAction", {"show"}), 0);
  EXPECT_NE(call("Activate", {}), 0);
  EXPECT_NE(call("Explode", {}), 0);
  EXPECT_EQ(call("Activate", {"{}"}), 0);
  EXPECT_TRUE(becomesTrue([&] { return called("activate "); }, "only the right call arrives"));
}

TEST_F(SingleInstanceOnDisplay, WorksAloneWithoutABusAndSaysSo) {
  SingleInstance instance({},
                          QDBusConnection::connectToBus(QStringLiteral("unix:path=/nowhere/bus"), "missing"));
  EXPECT_EQ(instance.start(), SingleInstance::Role::alone);
  EXPECT_TRUE(m_log.has("no session bus"));
}

TEST_F(SingleInstanceOnDisplay, SurvivesTheEndOfTheBus) {
  const QDBusConnection bus = connection();
  {
    SingleInstance instance(recordingHandlers(), bus);
    ASSERT_EQ(instance.start(), SingleInstance::Role::first);
    m_bus->stop();
    EXPECT_TRUE(becomesTrue([&] { return !bus.isConnected(); }, "the connection is noticed to be gone"));
  }
  EXPECT_EQ(m_calls, "");
}

} // namespace
} // namespace orbel::qt
