// What a menu item offers beside MenuItem when it can be matched against a running program. A caller that
// holds an arbitrary item asks with a dynamic cast; items of files do not offer it.
#pragma once

#include "platform/RunningApplication.h"

namespace orbel {

class RepresentsRunningApplication {
public:
  virtual ~RepresentsRunningApplication() = default;
  virtual bool representsRunningApplication(const RunningApplication& application) const = 0;

protected:
  // The first of the workspace's running applications, in its order, that this item represents; may be empty.
  RunningApplicationPointer firstRepresentedApplication() const;
  // Hands that application, and no other, to the companion that quits programs. Nothing happens when there is
  // none.
  void quitFirstRepresentedApplication() const;
};

} // namespace orbel
