// Collects what is logged while it lives.
#pragma once

#include "foundation/Log.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace orbel::qt {

class LogCapture {
public:
  LogCapture()
      : m_earlier(Log::setSink([this](Log::Severity, const std::string& line) { lines.push_back(line); })) {}
  ~LogCapture() { Log::setSink(std::move(m_earlier)); }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  bool has(const std::string& part) const {
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& line) { return line.find(part) != std::string::npos; });
  }

  std::vector<std::string> lines;

private:
  Log::Sink m_earlier;
};

} // namespace orbel::qt
