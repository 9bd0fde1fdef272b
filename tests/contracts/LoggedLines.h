// Keeps what is logged while it lives.
#pragma once

#include "foundation/Log.h"

#include <string>
#include <utility>
#include <vector>

namespace orbel::contracts {

class LoggedLines {
public:
  LoggedLines() {
    m_earlier = Log::setSink([this](Log::Severity, const std::string& line) { lines.push_back(line); });
  }
  ~LoggedLines() { Log::setSink(std::move(m_earlier)); }
  LoggedLines(const LoggedLines&) = delete;
  LoggedLines& operator=(const LoggedLines&) = delete;

  std::vector<std::string> lines;

private:
  Log::Sink m_earlier;
};

} // namespace orbel::contracts
