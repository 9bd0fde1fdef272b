// The companion program that quits other programs, reached through its URL scheme alone; it never answers.
#pragma once

namespace orbel {

class CompanionToolkit {
public:
  // Whether some application opens the companion's URLs.
  static bool isAvailable();
  // Starts it ahead of use, where it is available.
  static void start();
  // Asks it to end itself, where it is available. Called when the program terminates.
  static void terminate();
};

} // namespace orbel
