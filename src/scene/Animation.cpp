#include "scene/Animation.h"

namespace orbel {

namespace {
int openGroups = 0;
}

double easeInEaseOut(double progress) {
  if (!(progress > 0)) return 0;
  if (progress >= 1) return 1;
  return progress * progress * (3 - 2 * progress);
}

ImmediateAnimationGroup::ImmediateAnimationGroup() {
  ++openGroups;
}
ImmediateAnimationGroup::~ImmediateAnimationGroup() {
  --openGroups;
}
bool ImmediateAnimationGroup::isOpen() {
  return openGroups > 0;
}

} // namespace orbel
