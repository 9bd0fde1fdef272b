// Counts the rings of the display's bell, which programs ring to refuse something.
#pragma once

#include "tests/support/x11/DisplayConnection.h"

#include <string>

namespace orbel::test {

class Bell {
public:
  // Counts from now on. Throws std::runtime_error where the server does not report the bell.
  explicit Bell(const std::string& display);

  // So far.
  int rings();

private:
  DisplayConnection m_display;
  std::uint8_t m_event = 0;
  int m_rings = 0;
};

} // namespace orbel::test
