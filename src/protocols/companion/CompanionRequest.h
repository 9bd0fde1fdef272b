// What a URL of the scheme "orbelmenu-toolkit:" asks for. Any program and any page can open such a URL, so
// everything that is not exactly one of the three forms is refused.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace orbel {

struct CompanionRequest {
  struct Start {};                      // "orbelmenu-toolkit:"
  struct Terminate {};                  // "orbelmenu-toolkit:terminate", the companion itself
  struct Quit {                         // "orbelmenu-toolkit:terminate/PID"
    std::int32_t processIdentifier = 0; // above 1
  };
  struct Refusal {
    std::string cause; // readable
  };
  using Result = std::variant<Start, Terminate, Quit, Refusal>;

  static Result parse(std::string_view url);
};

} // namespace orbel
