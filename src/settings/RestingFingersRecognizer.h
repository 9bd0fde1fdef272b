// Recognises fingers put down together on a touchpad and held still. Positions are normalised to the pad (0
// to 1). The settings store feeds it the touches and runs the check that it asks for after kRestDuration.
#pragma once

#include "platform/EventTaps.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace orbel {

class RestingFingersRecognizer {
public:
  using Touches = std::vector<Touch>;

  // Seconds the fingers have to stay.
  static constexpr double kRestDuration = 0.3;
  // The mean movement that is no longer a rest, as a share of the pad.
  static constexpr double kMovementLimit = 0.025;

  // All touches now down. Yields the touches to be checked after kRestDuration when they may have begun a
  // rest of that many fingers; every check needs all fingers lifted since the last one, and never more of
  // them on the pad.
  std::optional<Touches> touchesChanged(const Touches& touches, std::int64_t fingerCount);
  // A pinch spoils the rest that is being waited for.
  void magnified();
  // Whether the touches that began the rest are still there, have hardly moved, and were never joined
  // by another.
  bool isRest(const Touches& startTouches) const;

  std::int64_t touchCount() const { return m_touchCount; }
  void setTouchCount(std::int64_t touchCount) { m_touchCount = touchCount; }
  const Touches& currentTouches() const { return m_currentTouches; }
  void setCurrentTouches(Touches touches) { m_currentTouches = std::move(touches); }
  // False at first: the fingers have to be lifted once before anything counts.
  bool nFingerRestPossible() const { return m_nFingerRestPossible; }
  void setNFingerRestPossible(bool possible) { m_nFingerRestPossible = possible; }

private:
  std::int64_t m_touchCount = 0;
  Touches m_currentTouches;
  bool m_nFingerRestPossible = false;
  bool m_wereTooMany = false; // since the rest began
};

} // namespace orbel
