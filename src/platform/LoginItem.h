// Whether the desktop starts the program when the user logs in. The desktop's own tools can change it at any
// time. Called by the settings store. Main thread only.
#pragma once

#include "foundation/Registration.h"
#include "foundation/Result.h"

#include <functional>

namespace orbel {

class LoginItem {
public:
  enum class State { registered, notRegistered, undecided };

  virtual ~LoginItem() = default;
  // Asked of the desktop now. Undecided where the program has never been registered or refused, so that the
  // user's setting decides. Fails when it cannot be read.
  virtual Result<State> state() const = 0;
  // After a failure the desktop does what it did before. Registering again brings the registration up to date
  // with where the program is installed now.
  virtual Result<> setRegistered(bool registered) = 0;
  // Calls the block after a change, ours or from outside, as far as the desktop reports it.
  virtual Registration observeChanges(std::function<void()> block) = 0;
};

} // namespace orbel
