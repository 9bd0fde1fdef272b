// A private session bus that starts only the services it was given, and the calls that tests make on it.
#pragma once

#include "tests/support/base/ChildProcess.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>

using GDBusConnection = struct _GDBusConnection;

namespace orbel::test {

class SessionBus {
public:
  // The address must be a path below a private folder. The environment reaches every service the bus starts.
  // Throws std::runtime_error when the bus does not come up.
  SessionBus(const Environment& environment, const std::filesystem::path& folder, const std::string& address,
             const std::filesystem::path& log);
  ~SessionBus();
  SessionBus(const SessionBus&) = delete;
  SessionBus& operator=(const SessionBus&) = delete;

  // Lets the bus start the named service of this machine (such as "org.xfce.Xfconf") when it is asked for.
  // Throws std::runtime_error when the machine has no such service.
  void offerInstalledService(const std::string& name);

  bool hasOwner(const std::string& name);
  std::optional<pid_t> processOf(const std::string& name);
  // True when the owner of the name answers a call at all, so its event loop runs.
  bool answers(const std::string& name, const std::string& objectPath);
  // Calls org.freedesktop.Application's Activate, and ActivateAction without parameters.
  testing::AssertionResult activate(const std::string& name, const std::string& objectPath);
  testing::AssertionResult activateAction(const std::string& name, const std::string& objectPath,
                                          const std::string& action);

  // For what the calls above do not cover: exporting objects, watching signals.
  GDBusConnection* connection() const { return m_connection; }
  // Ends the bus under the feet of its clients.
  void stop();

private:
  std::filesystem::path m_serviceFolder;
  std::optional<ChildProcess> m_daemon;
  GDBusConnection* m_connection = nullptr;
};

} // namespace orbel::test
