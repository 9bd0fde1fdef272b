// Whether the user's session has a message bus. To be asked before GIO is asked for a connection: where
// there is none it tries to start one, which takes long and has no use. Used by whoever talks to the desktop
// over GIO.
#pragma once

namespace orbel::common {

class SessionBus {
public:
  // By the address in the environment, else by the socket in the user's runtime folder.
  static bool isThere();
};

} // namespace orbel::common
