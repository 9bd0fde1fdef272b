// Keeps what the code under test logs while the object exists, in the order in which it came.
#pragma once

#include "foundation/Log.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace orbel::test {

class LogCapture {
public:
  LogCapture()
      : m_earlier(Log::setSink([this](Log::Severity, const std::string& line) { lines.push_back(line); })) {}
  ~LogCapture() { Log::setSink(std::move(m_earlier)); }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  // The lines with this text in them.
  int count(const std::string& part) const {
    return static_cast<int>(std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
      return line.find(part) != std::string::npos;
    }));
  }
  bool has(const std::string& part) const { return count(part) > 0; }

  std::vector<std::string> lines;

private:
  Log::Sink m_earlier;
};

} // namespace orbel::test
