// Collects what is logged while it lives.
#pragma once

#include "foundation/Log.h"

#include <string>
#include <utility>
#include <vector>

namespace orbel::linux {

class LogLines {
public:
  LogLines() {
    m_earlier = Log::setSink([this](Log::Severity, const std::string& line) { lines.push_back(line); });
  }
  ~LogLines() { Log::setSink(std::move(m_earlier)); }
  LogLines(const LogLines&) = delete;
  LogLines& operator=(const LogLines&) = delete;

  int count(const std::string& part) const {
    int found = 0;
    for (const auto& line : lines)
      found += line.find(part) != std::string::npos ? 1 : 0;
    return found;
  }

  std::vector<std::string> lines;

private:
  Log::Sink m_earlier;
};

} // namespace orbel::linux
