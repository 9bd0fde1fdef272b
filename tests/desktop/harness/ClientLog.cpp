#include "tests/desktop/harness/ClientLog.h"

#include "tests/support/base/TextFile.h"

namespace orbel::test {

std::vector<std::string> ClientLog::lines() const {
  return readLines(m_path);
}

std::vector<std::string> ClientLog::linesOf(std::string_view event) const {
  auto found = lines();
  std::erase_if(found, [&](const std::string& line) {
    return line != event && !line.starts_with(std::string(event) + ' ');
  });
  return found;
}

} // namespace orbel::test
