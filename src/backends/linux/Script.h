// Programs that are scripts: for the kernel the interpreter runs, for the user the script does.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orbel::linux {

class Script {
public:
  // The script that the process of that executable and those arguments runs; nothing when it runs none, also
  // when it merely got one to read, as an editor does.
  static std::optional<std::string> runBy(const std::string& executable,
                                          const std::vector<std::string>& arguments);
};

} // namespace orbel::linux
