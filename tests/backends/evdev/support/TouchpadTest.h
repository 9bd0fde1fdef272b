// A test with touchpads of its own. What the code under test logs is kept.
#pragma once

#include "foundation/Log.h"
#include "tests/backends/evdev/support/TestTouchpad.h"
#include "tests/backends/x11/support/MainLoop.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <umockdev.h>
#include <vector>

namespace orbel::test {

class TouchpadTest : public testing::Test {
protected:
  TouchpadTest()
      : m_testbed(umockdev_testbed_new()),
        m_earlierSink(
            Log::setSink([this](Log::Severity, const std::string& text) { m_log.push_back(text); })) {
    // What belongs to the testbed is open to everybody: where a device is not, that is the device's own.
    char* root = umockdev_testbed_get_root_dir(m_testbed);
    m_root = root;
    g_free(root);
    std::filesystem::permissions(m_root, std::filesystem::perms::all);
  }
  ~TouchpadTest() override {
    Log::setSink(m_earlierSink);
    g_object_unref(m_testbed);
  }

  UMockdevTestbed* testbed() { return m_testbed; }
  void openTestbedToOthers() const {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(m_root)) {
      if (entry.symlink_status().type() == std::filesystem::file_type::socket)
        std::filesystem::permissions(entry.path(), std::filesystem::perms::all);
    }
  }
  int countLogged(const std::string& part) const {
    return static_cast<int>(std::count_if(m_log.begin(), m_log.end(), [&](const std::string& line) {
      return line.find(part) != std::string::npos;
    }));
  }
  bool hasLogged(const std::string& part) const { return countLogged(part) > 0; }
  const std::vector<std::string>& log() const { return m_log; }

private:
  UMockdevTestbed* m_testbed;
  std::filesystem::path m_root;
  std::vector<std::string> m_log;
  Log::Sink m_earlierSink;
};

} // namespace orbel::test
