// A program that takes a key combination for itself: test-grabber KEYSYM MODIFIER-MASK LOG (numbers
// in decimal).
//
//   grabbed | bad-access     whether the server granted it
//   pressed, released        each use of it
#include "tests/desktop/clients/EventLog.h"
#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/Keymap.h"
#include "tests/support/x11/XcbReply.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>

namespace {

using namespace orbel::test;

// NumLock is the second modifier in every layout of these tests.
constexpr std::uint16_t kLockVariants[] = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                           XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};

bool grab(DisplayConnection& display, xcb_keycode_t code, std::uint16_t modifiers) {
  for (const std::uint16_t locks : kLockVariants) {
    const auto cookie =
        xcb_grab_key_checked(display.get(), 0, display.root(), static_cast<std::uint16_t>(modifiers | locks),
                             code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const XcbReply<xcb_generic_error_t> error(xcb_request_check(display.get(), cookie));
    if (error && error->error_code != XCB_ACCESS)
      throw std::runtime_error("the grab fails in an unexpected way");
    if (error) return false;
  }
  return true;
}

void report(DisplayConnection& display, EventLog& log) {
  while (const XcbReply<xcb_generic_event_t> event{xcb_wait_for_event(display.get())}) {
    const int type = event->response_type & ~0x80;
    if (type == XCB_KEY_PRESS) log.write("pressed");
    if (type == XCB_KEY_RELEASE) log.write("released");
  }
}

} // namespace

int main(int argumentCount, char** arguments) try {
  if (argumentCount != 4) throw std::invalid_argument("usage: test-grabber KEYSYM MODIFIER-MASK LOG");
  DisplayConnection display;
  EventLog log(arguments[3]);
  const auto key = Keymap(display).find(static_cast<xcb_keysym_t>(std::stoul(arguments[1])));
  if (!key) throw std::invalid_argument("the layout has no such key");
  const bool isGranted = grab(display, key->code, static_cast<std::uint16_t>(std::stoul(arguments[2])));
  log.write(isGranted ? "grabbed" : "bad-access");
  if (isGranted) report(display, log);
  return isGranted ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return EXIT_FAILURE;
}
