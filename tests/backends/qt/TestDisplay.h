// What the tests of this folder share: the private desktop of the round with a display, and waiting while the
// Qt event loop runs.
#pragma once

#include "tests/desktop/harness/DesktopSession.h"
#include "tests/support/base/Waiting.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <string>

namespace orbel::qt {

// The desktop that this process is connected to; null in the round without a display.
test::DesktopSession* testDisplay();
void setTestDisplay(test::DesktopSession* session);

// Runs the Qt event loop until the condition holds.
template <class Condition>
[[nodiscard]] testing::AssertionResult becomesTrue(Condition condition, const std::string& description) {
  return test::waitFor(
      [&] {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return condition();
      },
      description);
}

} // namespace orbel::qt
