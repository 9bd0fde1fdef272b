#include "tests/support/x11/VirtualDisplay.h"

#include "tests/support/base/AnnouncedLine.h"
#include "tests/support/base/TextFile.h"
#include "tests/support/base/Waiting.h"

#include <stdexcept>

namespace orbel::test {

VirtualDisplay::VirtualDisplay(const Environment& environment, const std::filesystem::path& log,
                               DisplayReach reach) {
  AnnouncedLine announcement;
  const std::string screen = std::to_string(kWidth) + 'x' + std::to_string(kHeight) + "x24";
  // -noreset: the server would otherwise start afresh whenever the last client leaves.
  m_server.emplace(ProcessDescription{
      .command = {"Xvfb", "-displayfd", std::to_string(announcement.writeEnd()), "-screen", "0", screen,
                  "-dpi", "96", reach == DisplayReach::network ? "-listen" : "-nolisten", "tcp", "-noreset",
                  "+extension", "RANDR", "+extension", "Composite", "+extension", "GLX", "+extension",
                  "RENDER"},
      .environment = environment,
      .log = log,
      .handedDescriptor = announcement.writeEnd()});
  const auto number = announcement.read(kPatience);
  if (!number) throw std::runtime_error("Xvfb does not start: " + readFile(log));
  m_name = ':' + *number;
}

} // namespace orbel::test
