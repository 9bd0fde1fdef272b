#include "tests/support/base/TemporaryDirectory.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace orbel::test {

TemporaryDirectory::TemporaryDirectory(std::string_view prefix) {
  // Not below a deep build folder: the bus socket inside must fit into the 108 bytes of a socket address.
  std::string pattern = (std::filesystem::temp_directory_path() / prefix).string() + "-XXXXXX";
  if (!::mkdtemp(pattern.data())) throw std::system_error(errno, std::generic_category(), pattern);
  m_path = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
  if (m_isKept) return;
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

} // namespace orbel::test
