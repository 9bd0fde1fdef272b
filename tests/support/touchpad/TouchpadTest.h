// A test with touchpads of its own. What the code under test logs is kept.
#pragma once

#include "tests/support/base/LogCapture.h"
#include "tests/support/glib/MainLoop.h"
#include "tests/support/touchpad/TestTouchpad.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <umockdev.h>
#include <vector>

namespace orbel::test {

class TouchpadTest : public testing::Test {
protected:
  TouchpadTest() : m_testbed(umockdev_testbed_new()) {
    // What belongs to the testbed is open to every user: where a device is not, that is the device's own.
    char* root = umockdev_testbed_get_root_dir(m_testbed);
    m_root = root;
    g_free(root);
    std::filesystem::permissions(m_root, std::filesystem::perms::all);
  }
  ~TouchpadTest() override { g_object_unref(m_testbed); }

  UMockdevTestbed* testbed() { return m_testbed; }
  void openTestbedToOthers() const {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(m_root)) {
      if (entry.symlink_status().type() == std::filesystem::file_type::socket)
        std::filesystem::permissions(entry.path(), std::filesystem::perms::all);
    }
  }
  int countLogged(const std::string& part) const { return m_log.count(part); }
  bool hasLogged(const std::string& part) const { return m_log.has(part); }
  const std::vector<std::string>& log() const { return m_log.lines; }

private:
  UMockdevTestbed* m_testbed;
  std::filesystem::path m_root;
  LogCapture m_log;
};

} // namespace orbel::test
