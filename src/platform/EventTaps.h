// Listening to the user's input system-wide, changing and delaying nothing. A tap is made disabled and
// selects nothing from the system while it is; callbacks run on the main thread. Owned by the settings store.
#pragma once

#include "foundation/Geometry.h"
#include "foundation/Result.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace orbel {

class EventTap {
public:
  virtual ~EventTap() = default; // ends the tap, also from within its callback
  virtual void setEnabled(bool enabled) = 0;
  virtual bool isEnabled() const = 0;
};

// A finger resting on a touchpad in the touching phase (began, moved or stationary).
struct Touch {
  std::int64_t identity = 0; // stable while the finger stays down
  Point normalizedPosition;  // 0 to 1 on each axis of the pad, y up
};

struct TouchHandlers {
  std::function<void(const std::vector<Touch>&)> touchesChanged; // all fingers now down
  std::function<void()> magnified;                               // the fingers' spread changed as in a pinch
};

class EventTaps {
public:
  // Seconds.
  static constexpr double kMovementInterval = 0.05;
  // What became of a movement. After a taken one no other matters for kMovementInterval.
  enum class MovementUse { taken, ignored };

  virtual ~EventTaps() = default;
  // Every release of the primary button anywhere, before our own windows act on it.
  virtual std::unique_ptr<EventTap> makeMouseUpTap(std::function<void()> mouseUp) = 0;
  // The pointer's movements with no button held. Of those that follow a taken one within kMovementInterval
  // any may be left out, so that a mouse with a thousand reports a second does not wake the process for each;
  // all others are reported. The position is asked of the window system.
  virtual std::unique_ptr<EventTap> makeMouseMovedTap(std::function<MovementUse()> mouseMoved) = 0;
  // Whether movements can be reported at all. Where not, a mouse-moved tap can be made but is never called,
  // and nothing enables it.
  virtual bool tellsMovements() const = 0;
  virtual std::unique_ptr<EventTap> makeTouchTap(TouchHandlers handlers) = 0;

  // Whether the process may listen at all; asks the user for it where the desktop has a way to ask.
  virtual bool isTrusted() = 0;
  // Fails when there is a touchpad that the process may not read; the cause names it. Its fingers are not
  // reported until the user grants access.
  virtual Result<> checkTouchpadAccess() { return {}; }
};

} // namespace orbel
