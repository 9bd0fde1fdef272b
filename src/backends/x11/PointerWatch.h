// Waits for the pointer to leave a rectangle of the screen, wherever it moves and whatever window it is over.
// Raw motion is selected from the server only while somebody waits. Main thread only.
#pragma once

#include "backends/x11/DeviceRect.h"
#include "foundation/Registration.h"

#include <functional>

namespace orbel {

class Connection;
class RawPointer;

class PointerWatch {
public:
  // The connection is asked for the pointer's place; both outlive the watch.
  PointerWatch(Connection& connection, RawPointer& pointer) : m_connection(connection), m_pointer(pointer) {}
  PointerWatch(const PointerWatch&) = delete;
  PointerWatch& operator=(const PointerWatch&) = delete;

  // Calls the block once, from the main loop, when the pointer has moved out of the rectangle, and stops; the
  // block may destroy the watch. False, and nothing is watched, when the pointer is outside already. Replaces
  // an earlier wait.
  bool waitUntilOutside(const DeviceRect& rect, std::function<void()> left);
  void stop();

private:
  void pointerMoved();
  bool isOutside() const;

  Connection& m_connection;
  RawPointer& m_pointer;
  DeviceRect m_rect;
  std::function<void()> m_left;
  Registration m_motion;
};

} // namespace orbel
