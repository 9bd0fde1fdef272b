#include "protocols/companion/CompanionRequest.h"

#include <charconv>
#include <system_error>

namespace orbel {

namespace {
constexpr std::string_view kScheme = "orbelmenu-toolkit:";
constexpr std::string_view kTerminate = "terminate";
// Process 1 keeps the session going and 0 and the negative ones name groups of processes.
constexpr std::int32_t kFirstProcess = 2;
} // namespace

CompanionRequest::Result CompanionRequest::parse(std::string_view url) {
  if (!url.starts_with(kScheme)) return Refusal{"it is no URL of orbelmenu-toolkit"};
  url.remove_prefix(kScheme.size());
  if (url.empty()) return Start{};
  if (!url.starts_with(kTerminate)) return Refusal{"the only thing to ask for is \"terminate\""};
  url.remove_prefix(kTerminate.size());
  if (url.empty()) return Terminate{};
  if (!url.starts_with('/')) return Refusal{"the only thing to ask for is \"terminate\""};
  url.remove_prefix(1);

  Quit quit;
  const auto [end, error] = std::from_chars(url.data(), url.data() + url.size(), quit.processIdentifier);
  if (error != std::errc() || end != url.data() + url.size())
    return Refusal{"it names no process by its number"};
  if (quit.processIdentifier < kFirstProcess) return Refusal{"that process is never asked to quit"};
  return quit;
}

} // namespace orbel
