#include "tests/desktop/harness/VirtualDisplay.h"

#include "tests/desktop/harness/AnnouncedLine.h"
#include "tests/desktop/harness/TextFile.h"
#include "tests/desktop/harness/Waiting.h"

#include <stdexcept>

namespace orbel::desktop {

VirtualDisplay::VirtualDisplay(const Environment& environment, const std::filesystem::path& log) {
  AnnouncedLine announcement;
  const std::string screen = std::to_string(kWidth) + 'x' + std::to_string(kHeight) + "x24";
  // -noreset: the server would otherwise start afresh whenever the last client leaves.
  m_server.emplace(ProcessDescription{
      .command = {"Xvfb", "-displayfd", std::to_string(announcement.writeEnd()), "-screen", "0", screen,
                  "-dpi", "96", "-nolisten", "tcp", "-noreset", "+extension", "RANDR", "+extension",
                  "Composite", "+extension", "GLX", "+extension", "RENDER"},
      .environment = environment,
      .log = log,
      .handedDescriptor = announcement.writeEnd()});
  const auto number = announcement.read(kPatience);
  if (!number) throw std::runtime_error("Xvfb does not start: " + readFile(log));
  m_name = ':' + *number;
}

} // namespace orbel::desktop
