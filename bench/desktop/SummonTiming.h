// From a key press to the picture: presses a combination through XTEST and watches the screen.
#pragma once

#include "tests/desktop/harness/DesktopSession.h"

#include <vector>
#include <xcb/xcb.h>

namespace orbel::bench {

class SummonTiming {
public:
  // The combination shows the window around the middle of the screen and, pressed again, hides it.
  SummonTiming(test::DesktopSession& session, std::vector<xcb_keysym_t> combination);

  // Milliseconds from the press of the last key until half of the pixels that the window changes in the
  // screen's middle row have changed. Ends with the window hidden and the screen as before.
  double halfPicture();

private:
  test::Picture row() const;
  test::Picture settledRow(const test::Picture& differentFrom) const;
  void press();
  void release();

  test::DesktopSession& m_session;
  std::vector<xcb_keysym_t> m_combination;
  test::ScreenRect m_row;
  test::Picture m_before{1, 1};
};

} // namespace orbel::bench
