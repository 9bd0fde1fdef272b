// Desktop entries for the time of one test, and an index that has seen them appear and disappear.
#pragma once

#include "backends/linux/DesktopEntryIndex.h"
#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/support/glib/MainLoop.h"

#include <gtest/gtest.h>

#include <string>

namespace orbel::linux {

class InstalledEntries {
public:
  explicit InstalledEntries(const DesktopEntryIndex& index) : m_index(index) {}
  ~InstalledEntries() {
    DesktopSandbox::shared().removeAllEntries();
    EXPECT_TRUE(test::iterateUntil([this] { return m_index.entries().empty(); }));
  }
  InstalledEntries(const InstalledEntries&) = delete;
  InstalledEntries& operator=(const InstalledEntries&) = delete;

  std::string add(const std::string& identifier, const std::string& lines) {
    auto path = DesktopSandbox::shared().installEntry(identifier, lines);
    EXPECT_TRUE(test::iterateUntil([&] { return m_index.withPath(path) != nullptr; })) << path;
    return path;
  }

private:
  const DesktopEntryIndex& m_index;
};

} // namespace orbel::linux
