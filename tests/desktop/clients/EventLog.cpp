#include "tests/desktop/clients/EventLog.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace orbel::test {

EventLog::EventLog(const std::string& path)
    : m_descriptor(path.empty() ? ::dup(STDOUT_FILENO)
                                : ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644)) {
  if (m_descriptor < 0) throw std::system_error(errno, std::generic_category(), path);
}

EventLog::~EventLog() {
  ::close(m_descriptor);
}

void EventLog::write(std::string_view line) {
  // In one call, so that a reader never sees half a line.
  const std::string text = std::string(line) + '\n';
  if (::write(m_descriptor, text.data(), text.size()) < 0) {
    throw std::system_error(errno, std::generic_category(), "the event log");
  }
}

} // namespace orbel::test
