#include "protocols/companion/CompanionUrl.h"

#include <charconv>
#include <system_error>

namespace orbel {

namespace {
constexpr std::string_view kTerminate = "terminate";
// Process 1 keeps the session running and 0 and the negative ones name groups of processes.
constexpr std::int32_t kFirstProcess = 2;
} // namespace

std::string CompanionUrl::compose(const Request& request) {
  std::string url(kScheme);
  url += ':';
  if (std::holds_alternative<Start>(request)) return url;
  url += kTerminate;
  if (const auto* quit = std::get_if<Quit>(&request)) url += '/' + std::to_string(quit->processIdentifier);
  return url;
}

Result<CompanionUrl::Request> CompanionUrl::parse(std::string_view url) {
  if (!url.starts_with(kScheme) || !url.substr(kScheme.size()).starts_with(':'))
    return Failure{"it is no URL of " + std::string(kScheme)};
  url.remove_prefix(kScheme.size() + 1);
  if (url.empty()) return Request(Start{});
  if (!url.starts_with(kTerminate)) return Failure{"the only thing to ask for is \"terminate\""};
  url.remove_prefix(kTerminate.size());
  if (url.empty()) return Request(Terminate{});
  if (!url.starts_with('/')) return Failure{"the only thing to ask for is \"terminate\""};
  url.remove_prefix(1);

  Quit quit;
  const auto [end, error] = std::from_chars(url.data(), url.data() + url.size(), quit.processIdentifier);
  if (error != std::errc() || end != url.data() + url.size())
    return Failure{"it names no process by its number"};
  if (quit.processIdentifier < kFirstProcess) return Failure{"that process is never asked to quit"};
  return Request(quit);
}

} // namespace orbel
