// The pipe on which a server announces that it is ready: Xvfb writes its display number, the bus its address.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace orbel::test {

class AnnouncedLine {
public:
  AnnouncedLine();
  ~AnnouncedLine();
  AnnouncedLine(const AnnouncedLine&) = delete;
  AnnouncedLine& operator=(const AnnouncedLine&) = delete;

  // The descriptor to hand to the server.
  int writeEnd() const { return m_writeEnd; }
  // The line without its newline; nothing when the server ends or stays silent. Call once, after the server
  // has been started: our own writing end is closed, so that a dying server is noticed at once.
  std::optional<std::string> read(std::chrono::milliseconds timeout);

private:
  int m_readEnd = -1;
  int m_writeEnd = -1;
};

} // namespace orbel::test
