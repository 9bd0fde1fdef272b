#include "tests/support/base/AnnouncedLine.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace orbel::test {

AnnouncedLine::AnnouncedLine() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
  m_readEnd = ends[0];
  m_writeEnd = ends[1];
}

AnnouncedLine::~AnnouncedLine() {
  ::close(m_readEnd);
  if (m_writeEnd >= 0) ::close(m_writeEnd);
}

std::optional<std::string> AnnouncedLine::read(std::chrono::milliseconds timeout) {
  ::close(m_writeEnd);
  m_writeEnd = -1;
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  std::string line;
  for (;;) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()).count();
    pollfd input{m_readEnd, POLLIN, 0};
    if (left <= 0 || ::poll(&input, 1, static_cast<int>(left)) == 0) return std::nullopt;
    char character = 0;
    const ssize_t count = ::read(m_readEnd, &character, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return std::nullopt;
    // Xvfb writes the number and the newline separately: the number alone may be the first digit of two.
    if (character == '\n') return line;
    line += character;
  }
}

} // namespace orbel::test
