// The event taps of an X11 desktop: the pointer's from raw input events, touches from a source that main
// gives, since the X server keeps resting fingers to itself, pinches from both.
#pragma once

#include "platform/EventTaps.h"

namespace orbel::x11 {

class PinchGestures;
class RawPointer;

// Where touches come from. Either block may be empty.
struct TouchSource {
  std::function<std::unique_ptr<EventTap>(TouchHandlers)> makeTap;
  std::function<Result<>()> checkAccess; // as the event taps'
};

class X11EventTaps : public EventTaps {
public:
  // `pinches` may be empty: then only those that the source finds are reported.
  explicit X11EventTaps(RawPointer& pointer, TouchSource touches = {}, PinchGestures* pinches = nullptr);

  std::unique_ptr<EventTap> makeMouseUpTap(std::function<void()> mouseUp) override;
  std::unique_ptr<EventTap> makeMouseMovedTap(std::function<MovementUse()> mouseMoved) override;
  bool tellsMovements() const override { return true; }
  // Without a source the tap does nothing and says so in the log when it is enabled.
  std::unique_ptr<EventTap> makeTouchTap(TouchHandlers handlers) override;
  bool isTrusted() override;
  Result<> checkTouchpadAccess() override;

  // Lets the taps handle what happened before this call. A window of ours calls it before it acts on
  // a release.
  void drain();

private:
  RawPointer& m_pointer;
  TouchSource m_touches;
  PinchGestures* m_pinches;
};

} // namespace orbel::x11
