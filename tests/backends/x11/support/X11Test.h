// A test on an X server of its own. What the code under test logs is kept.
#pragma once

#include "backends/x11/Connection.h"
#include "foundation/Log.h"
#include "tests/backends/x11/support/Driver.h"
#include "tests/backends/x11/support/MainLoop.h"
#include "tests/backends/x11/support/OtherClient.h"
#include "tests/backends/x11/support/Program.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace orbel::test {

class X11Test : public testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;

  const std::string& display() const { return m_display; }
  Driver& driver() { return *m_driver; }
  std::unique_ptr<x11::Connection> connect() { return x11::Connection::open(m_display); }
  Program& server() { return *m_server; }

  // Another program with the windows that the options describe.
  std::unique_ptr<OtherClient> otherClient(const std::vector<std::string>& options);
  // Runs a program to its end on this display; it must succeed.
  void run(std::vector<std::string> command);
  // "openbox", "xfwm4" or "kwin_x11"; returns when it serves windows. "" is no window manager.
  void startWindowManager(const std::string& name);
  void stopWindowManager();

  bool hasLogged(const std::string& part) const;
  const std::vector<std::string>& log() const { return m_log; }

private:
  std::string makeFolder();

  std::string m_folder;
  std::string m_display;
  std::unique_ptr<Program> m_server;
  std::unique_ptr<Driver> m_driver;
  std::unique_ptr<Program> m_windowManager;
  std::vector<std::string> m_log;
  Log::Sink m_earlierSink;
};

} // namespace orbel::test
