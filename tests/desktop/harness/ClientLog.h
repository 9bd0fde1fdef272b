// What a test client has written down so far, one event a line ("mapped 0x400001", "focus-in normal",
// "key-press 0x20"); the programs in clients/ list their lines.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orbel::test {

class ClientLog {
public:
  explicit ClientLog(std::filesystem::path path) : m_path(std::move(path)) {}

  const std::filesystem::path& path() const { return m_path; }
  std::vector<std::string> lines() const;
  // Lines that are the event or begin with it and a space.
  std::vector<std::string> linesOf(std::string_view event) const;
  int count(std::string_view event) const { return static_cast<int>(linesOf(event).size()); }
  bool contains(std::string_view event) const { return count(event) > 0; }

private:
  std::filesystem::path m_path;
};

} // namespace orbel::test
