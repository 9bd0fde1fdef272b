// An X server with an invisible screen and a touchpad whose gestures the test makes. Xvfb has no
// touchpad; this is the full server with its driver for input tests. Talks that driver's protocol,
// version 1.1.
#pragma once

#include "tests/support/base/ChildProcess.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orbel::test {

class PinchServer {
public:
  PinchServer();
  ~PinchServer();
  PinchServer(const PinchServer&) = delete;
  PinchServer& operator=(const PinchServer&) = delete;

  // Empty when no such server can be started here; `problem` says why.
  const std::string& display() const { return m_display; }
  const std::string& problem() const { return m_problem; }

  // Two fingers, `scale` times as far apart as at the beginning. Each returns when the server has dealt
  // with it.
  void beginPinch();
  void pinch(double scale);
  void endPinch(double scale);

private:
  enum class EventType : std::uint32_t { clientVersion = 0, waitForSync = 1, pinch = 7 };
  struct Header {
    std::uint32_t length;
    EventType type;
  };

  bool connectToTouchpad();
  template <class Message>
  void send(Message message, EventType type);
  bool receive();
  void sendPinch(std::uint16_t gestureType, double scale);

  TemporaryDirectory m_folder{"orbel-pinch"};
  std::string m_display;
  std::string m_problem;
  std::optional<ChildProcess> m_server;
  int m_socket = -1;
};

} // namespace orbel::test
