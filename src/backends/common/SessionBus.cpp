#include "backends/common/SessionBus.h"

#include <glib.h>

#include <sys/stat.h>

#include <string>

namespace orbel::common {

bool SessionBus::isThere() {
  const char* address = g_getenv("DBUS_SESSION_BUS_ADDRESS");
  if (address && *address) return true;
  struct stat status {};
  const std::string socket = std::string(g_get_user_runtime_dir()) + "/bus";
  return ::stat(socket.c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

} // namespace orbel::common
