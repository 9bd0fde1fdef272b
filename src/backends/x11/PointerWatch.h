// Waits for the pointer to leave a rectangle of the root window. Raw motion is selected from the server only
// while something is waited for.
#pragma once

#include "backends/common/PointerWatch.h"
#include "foundation/Registration.h"

#include <functional>

namespace orbel::x11 {

class Connection;
class RawPointer;

class PointerWatch final : public common::PointerWatch {
public:
  // The connection is asked for the pointer's place; both outlive the watch.
  PointerWatch(Connection& connection, RawPointer& pointer) : m_connection(connection), m_pointer(pointer) {}
  PointerWatch(const PointerWatch&) = delete;
  PointerWatch& operator=(const PointerWatch&) = delete;

  bool waitUntilOutside(const common::DeviceRect& rect, std::function<void()> left) override;
  void stop() override;

private:
  void pointerMoved();
  bool isOutside() const;

  Connection& m_connection;
  RawPointer& m_pointer;
  common::DeviceRect m_rect;
  std::function<void()> m_left;
  Registration m_motion;
};

} // namespace orbel::x11
