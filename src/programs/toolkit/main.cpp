// orbelmenu-toolkit: asks another program to quit, on behalf of the menu, as its close button would. It is
// started anew for each URL and ends when that is done, so it costs nothing in between; the URLs that start
// and end it find nothing left to do. Status 0 when done, 1 when the process was refused, 2 when the URL was.
#include "backends/x11/Connection.h"
#include "backends/x11/WindowCloser.h"
#include "protocols/companion/CompanionUrl.h"

#include <cstdio>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using namespace orbel;

namespace {

constexpr int kDone = 0;
constexpr int kProcessRefused = 1;
constexpr int kUrlRefused = 2;

int refuse(int status, const std::string& cause) {
  std::fprintf(stderr, "orbelmenu-toolkit: refused: %s\n", cause.c_str());
  return status;
}

bool belongsToUser(std::int32_t processIdentifier) {
  struct stat status {};
  return stat(("/proc/" + std::to_string(processIdentifier)).c_str(), &status) == 0 &&
         status.st_uid == geteuid();
}

int quit(std::int32_t processIdentifier) {
  if (processIdentifier == getpid()) return refuse(kProcessRefused, "that is this very process");
  if (!belongsToUser(processIdentifier)) {
    return refuse(kProcessRefused, "you have no process " + std::to_string(processIdentifier));
  }
  const auto connection = x11::Connection::open();
  if (!connection) return kProcessRefused;
  if (x11::WindowCloser(*connection).closeWindows(processIdentifier) == 0) {
    return refuse(kProcessRefused, "process " + std::to_string(processIdentifier) +
                                       " has no window that can be asked to close");
  }
  return kDone;
}

} // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) return refuse(kUrlRefused, "exactly one URL is expected");
  const auto request = CompanionUrl::parse(arguments[1]);
  if (!request) return refuse(kUrlRefused, request.cause());
  if (const auto* toQuit = std::get_if<CompanionUrl::Quit>(&*request)) return quit(toQuit->processIdentifier);
  return kDone;
}
