// Time as the core sees it: a monotonic clock, one-shot delays and animation frames, all on the main thread.
// Tests give a manual clock; nothing in the core sleeps or reads the time in any other way.
#pragma once

#include "foundation/Registration.h"

#include <functional>

namespace orbel {

class Clock {
public:
  virtual ~Clock() = default;
  // Seconds since an arbitrary moment; never decreases.
  virtual double now() const = 0;
};

class RunLoop {
public:
  virtual ~RunLoop() = default;
  virtual const Clock& clock() const = 0;

  // Runs the block once, after at least that many seconds, never inside this call; 0 or less means the next
  // turn. Blocks run in the order of their time, those of one time in the order in which they were asked for,
  // also when the loop was held up past several of them.
  virtual void after(double seconds, std::function<void()> block) = 0;

  // Runs the block once a display frame while the registration lives; frames that the loop was held up past
  // are left out. With none alive the loop never wakes for frames.
  virtual Registration onEveryFrame(std::function<void()> block) = 0;
};

} // namespace orbel
