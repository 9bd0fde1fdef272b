// The program's log: one readable line a message, for the user who asks "why did that not work?".
// Main thread only. Standard error unless a sink is set (tests set one to read what was logged).
#pragma once

#include "foundation/Result.h"

#include <functional>
#include <string>
#include <string_view>

namespace orbel {

class Log {
public:
  enum class Severity { information, warning, error };
  using Sink = std::function<void(Severity, const std::string& message)>;

  static void information(std::string_view message) { write(Severity::information, message); }
  static void warning(std::string_view message) { write(Severity::warning, message); }
  static void error(std::string_view message) { write(Severity::error, message); }
  // The cause of an operation that failed; nothing after a success.
  template <class Value>
  static void warningIfFailed(const Result<Value>& result) {
    if (!result) warning(result.cause());
  }

  // Replaces the sink and returns the earlier one; an empty sink means standard error.
  static Sink setSink(Sink sink);

private:
  static void write(Severity severity, std::string_view message);
};

} // namespace orbel
