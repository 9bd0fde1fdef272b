// What the agent asks of the companion, as a URL of the scheme "orbelmenu-toolkit". The agent composes it and
// the desktop starts the companion with it, which parses it. Any program and any page can open such a URL, so
// everything that is not exactly one of the three forms is refused.
#pragma once

#include "foundation/Result.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace orbel {

class CompanionUrl {
public:
  // Stands in the companion's desktop entry, too.
  static constexpr std::string_view kScheme = "orbelmenu-toolkit";

  struct Start {};                      // "orbelmenu-toolkit:"
  struct Terminate {};                  // "orbelmenu-toolkit:terminate", the companion itself
  struct Quit {                         // "orbelmenu-toolkit:terminate/PID"
    std::int32_t processIdentifier = 0; // above 1
  };
  using Request = std::variant<Start, Terminate, Quit>;

  static std::string compose(const Request& request);
  // The failure is the refusal's cause.
  static Result<Request> parse(std::string_view url);
};

} // namespace orbel
