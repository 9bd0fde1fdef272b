// A test on an X server that the cases of the program share, one for each window manager. What the code under
// test logs is kept.
#pragma once

#include "backends/x11/Connection.h"
#include "tests/backends/x11/support/Driver.h"
#include "tests/backends/x11/support/OtherClient.h"
#include "tests/desktop/harness/SharedDesktop.h"
#include "tests/support/base/LogCapture.h"
#include "tests/support/glib/MainLoop.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel::test {

class X11Test : public testing::Test {
protected:
  explicit X11Test(WindowManagerKind windowManager = WindowManagerKind::none);
  void SetUp() override;
  void TearDown() override;

  DesktopSession& session() { return m_desktop.session(); }
  const std::string& display() { return session().server().name(); }
  Driver& driver() { return *m_driver; }
  std::unique_ptr<x11::Connection> connect() { return x11::Connection::open(display()); }
  ChildProcess& server() { return session().server().server(); }

  // Another program with the windows that the options describe.
  std::unique_ptr<OtherClient> otherClient(const std::vector<std::string>& options);

  bool hasLogged(const std::string& part) const { return m_log->has(part); }
  const std::vector<std::string>& log() const { return m_log->lines; }

private:
  SharedDesktop m_desktop;
  std::optional<LogCapture> m_log;
  std::unique_ptr<Driver> m_driver;
};

} // namespace orbel::test
