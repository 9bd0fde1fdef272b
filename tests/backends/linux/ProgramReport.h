// A program that reports how it was started, once, in a file of its own.
#pragma once

#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/support/glib/MainLoop.h"

#include <string>

namespace orbel::linux {

class ProgramReport {
public:
  // Installs the program under that name.
  explicit ProgramReport(const std::string& name)
      : m_report(DesktopSandbox::shared().makeFolder() + "/report") {
    const std::string part = m_report + ".part";
    // The sixth field of the status is the session, the first one the process.
    path = DesktopSandbox::shared().installProgram(
        name,
        "PATH=/usr/bin:/bin\n{ for word in \"$@\"; do echo \"argument:$word\"; done\n"
        "echo \"process:$$ session:$(cut -d' ' -f6 /proc/$$/stat)\"\necho \"folder:$(pwd)\"\nenv; } > " +
            part + "\nmv " + part + " " + m_report + "\n");
  }

  // The lines, once the program has run; "" when it never does.
  std::string wait() const {
    return test::iterateUntil([this] { return DesktopSandbox::exists(m_report); })
               ? DesktopSandbox::read(m_report)
               : "";
  }
  bool hasRun() const { return DesktopSandbox::exists(m_report); }

  std::string path;

private:
  std::string m_report;
};

} // namespace orbel::linux
