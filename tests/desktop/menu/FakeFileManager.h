// A file manager on the session bus (org.freedesktop.FileManager1) that writes down which folders it was
// asked to show.
#pragma once

#include "tests/desktop/harness/SessionBus.h"

#include <string>
#include <vector>

using GDBusMethodInvocation = struct _GDBusMethodInvocation;
using GVariant = struct _GVariant;

namespace orbel::test {

class FakeFileManager {
public:
  // Owns the name when it returns; throws std::runtime_error where that fails.
  explicit FakeFileManager(SessionBus& bus);
  ~FakeFileManager();
  FakeFileManager(const FakeFileManager&) = delete;
  FakeFileManager& operator=(const FakeFileManager&) = delete;

  // "<method> <address>" for each call so far. Serves the calls that are waiting; to be asked again
  // and again.
  const std::vector<std::string>& requests();

private:
  void answer(const char* method, GVariant* parameters, GDBusMethodInvocation* invocation);

  GDBusConnection* m_connection;
  unsigned m_object = 0;
  std::vector<std::string> m_requests;
};

} // namespace orbel::test
