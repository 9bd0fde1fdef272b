// The file in which a test client writes down what happened to it, one event a line, each written at once.
#pragma once

#include <string>
#include <string_view>

namespace orbel::test {

class EventLog {
public:
  // An empty path writes to standard output. Throws std::system_error when the file cannot be opened.
  explicit EventLog(const std::string& path);
  ~EventLog();
  EventLog(const EventLog&) = delete;
  EventLog& operator=(const EventLog&) = delete;

  void write(std::string_view line);

private:
  int m_descriptor;
};

} // namespace orbel::test
