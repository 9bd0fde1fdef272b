// What a menu item offers beside MenuItem when it can be matched against a running program. A caller that
// holds an arbitrary item asks with a dynamic cast; items of files do not offer it.
#pragma once

#include "platform/RunningApplication.h"

namespace orbel {

class RepresentsRunningApplication {
public:
  virtual ~RepresentsRunningApplication() = default;
  virtual bool representsRunningApplication(const RunningApplication& application) const = 0;
  // Whether quitting the item would reach the application that it stands for. False also when none runs.
  bool canAskToQuit() const;

protected:
  // The first of the workspace's running applications, in its order, that this item represents; may be empty.
  RunningApplicationPointer firstRepresentedApplication() const;
  // Hands that application, and no other, to the companion that quits programs. Nothing happens when there is
  // none, or when it cannot be asked to close.
  void quitFirstRepresentedApplication() const;
};

} // namespace orbel
