// Looks through the program "env", which desktop entries and scripts put before the program that they mean.
// Used by the desktop entries and the scripts.
#pragma once

#include <string>
#include <vector>

namespace orbel::linux {

struct EnvCommand {
  std::vector<std::string> words; // the program that runs in the end and its arguments; empty when none does
  std::string folder;             // the one that "env" changes to first; "" when it changes to none

  // Of a command, its program's name first; one that does not begin with "env" is given back as it is.
  static EnvCommand of(std::vector<std::string> words);
};

} // namespace orbel::linux
