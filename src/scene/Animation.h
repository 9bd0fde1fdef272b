// How everything of ours moves and fades: one duration, one curve, zero inside an immediate group.
#pragma once

namespace orbel {

// Seconds, for the moves of items and for the fades of windows alike.
constexpr double kAnimationDuration = 0.15;

// Eased in and out: 0 at 0, 1 at 1, at rest at both ends. Progress outside 0 to 1 is cut.
double easeInEaseOut(double progress);

// While one lives, changes that would be animated are applied at once (an animation group of zero length).
class ImmediateAnimationGroup {
public:
  ImmediateAnimationGroup();
  ~ImmediateAnimationGroup();
  ImmediateAnimationGroup(const ImmediateAnimationGroup&) = delete;
  ImmediateAnimationGroup& operator=(const ImmediateAnimationGroup&) = delete;

  static bool isOpen();
};

} // namespace orbel
