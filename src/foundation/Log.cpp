#include "foundation/Log.h"

#include <cstdio>
#include <utility>

namespace orbel {

namespace {
Log::Sink& currentSink() {
  static Log::Sink sink;
  return sink;
}

const char* prefix(Log::Severity severity) {
  switch (severity) {
  case Log::Severity::information:
    return "orbelmenu: ";
  case Log::Severity::warning:
    return "orbelmenu: warning: ";
  case Log::Severity::error:
    return "orbelmenu: error: ";
  }
  return "";
}
} // namespace

Log::Sink Log::setSink(Sink sink) {
  return std::exchange(currentSink(), std::move(sink));
}

void Log::write(Severity severity, std::string_view message) {
  if (currentSink()) {
    currentSink()(severity, std::string(message));
    return;
  }
  std::fprintf(stderr, "%s%.*s\n", prefix(severity), static_cast<int>(message.size()), message.data());
}

} // namespace orbel
