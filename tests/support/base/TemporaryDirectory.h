// A fresh private folder (mode 0700) that is removed with everything in it when the object is destroyed.
#pragma once

#include <filesystem>
#include <string_view>

namespace orbel::test {

class TemporaryDirectory {
public:
  // Throws std::system_error when the folder cannot be made.
  explicit TemporaryDirectory(std::string_view prefix);
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  const std::filesystem::path& path() const { return m_path; }
  // Leaves the folder behind for whoever looks into a failed test.
  void keep() { m_isKept = true; }

private:
  std::filesystem::path m_path;
  bool m_isKept = false;
};

} // namespace orbel::test
