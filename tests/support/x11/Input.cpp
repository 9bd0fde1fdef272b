#include "tests/support/x11/Input.h"

#include "tests/support/x11/XcbReply.h"

#include <X11/keysym.h>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>
#include <stdexcept>
#include <xcb/xtest.h>

namespace orbel::test {

namespace {

constexpr std::uint8_t kAbsolute = 0;
constexpr std::uint8_t kRelative = 1;
// Programs take a press for a drag only after some pixels, and some look at the way and not at the jump.
constexpr int kDepartureSteps = 5;
constexpr int kDepartureStepLength = 3;
constexpr std::chrono::milliseconds kDeparturePace{40};
constexpr std::chrono::milliseconds kHandPace{10};

} // namespace

ScreenPoint CircularWay::at(double share) const {
  const double angle = (startDegrees + share * sweepDegrees) * std::numbers::pi / 180;
  return {center.x + static_cast<int>(std::lround(radius * std::sin(angle))),
          center.y - static_cast<int>(std::lround(radius * std::cos(angle)))};
}

Input::Input(DisplayConnection& display) : m_display(display) {
  const auto cookie = xcb_test_get_version(display.get(), 2, 2);
  const XcbReply<xcb_test_get_version_reply_t> reply(
      xcb_test_get_version_reply(display.get(), cookie, nullptr));
  if (!reply) throw std::runtime_error("the X server has no XTEST");
}

Input::~Input() {
  if (xcb_connection_has_error(m_display.get())) return;
  for (const std::uint8_t button : m_heldButtons) {
    xcb_test_fake_input(m_display.get(), XCB_BUTTON_RELEASE, button, 0, m_display.root(), 0, 0, 0);
  }
  for (const xcb_keycode_t code : m_heldKeys) {
    xcb_test_fake_input(m_display.get(), XCB_KEY_RELEASE, code, 0, m_display.root(), 0, 0, 0);
  }
  // Answered, not only sent: of a connection that closes the server may drop what it has not read.
  const XcbReply<xcb_get_input_focus_reply_t> carriedOut(
      xcb_get_input_focus_reply(m_display.get(), xcb_get_input_focus(m_display.get()), nullptr));
}

ScreenPoint Input::pointer() const {
  const auto cookie = xcb_query_pointer(m_display.get(), m_display.root());
  const XcbReply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(m_display.get(), cookie, nullptr));
  if (!reply) throw std::runtime_error("the X server does not tell where the pointer is");
  return {reply->root_x, reply->root_y};
}

void Input::movePointer(ScreenPoint to) {
  move(to, {});
}

void Input::movePointerBy(int right, int down) {
  fake(XCB_MOTION_NOTIFY, kRelative, {right, down}, {});
}

void Input::glidePointer(ScreenPoint to, int steps, std::chrono::milliseconds betweenSteps) {
  const ScreenPoint from = pointer();
  for (int step = 1; step <= steps; ++step) {
    move({from.x + (to.x - from.x) * step / steps, from.y + (to.y - from.y) * step / steps}, betweenSteps);
  }
}

std::chrono::milliseconds Input::circlePointer(const CircularWay& way) {
  movePointer(way.at(0));
  return follow(way, [this](ScreenPoint, ScreenPoint to, auto delay) { move(to, delay); });
}

std::chrono::milliseconds Input::circlePointerRelatively(const CircularWay& way) {
  return follow(way, [this](ScreenPoint from, ScreenPoint to, auto delay) {
    fake(XCB_MOTION_NOTIFY, kRelative, {to.x - from.x, to.y - from.y}, delay);
  });
}

std::chrono::milliseconds Input::follow(
    const CircularWay& way,
    const std::function<void(ScreenPoint from, ScreenPoint to, std::chrono::milliseconds delay)>& step) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  const auto elapsed = [start] {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
  };
  const auto count = way.duration / kHandPace;
  const auto place = [&](std::int64_t index) {
    return way.at(static_cast<double>(index) / static_cast<double>(count));
  };
  for (std::int64_t index = 1; index <= count; ++index) {
    const auto early = index * kHandPace - elapsed();
    step(place(index - 1), place(index), std::max(early, std::chrono::milliseconds(0)));
  }
  return elapsed();
}

void Input::press(PointerButton button) {
  const auto number = static_cast<std::uint8_t>(button);
  m_heldButtons.push_back(number);
  fake(XCB_BUTTON_PRESS, number, {}, {});
}

void Input::release(PointerButton button) {
  const auto number = static_cast<std::uint8_t>(button);
  std::erase(m_heldButtons, number);
  fake(XCB_BUTTON_RELEASE, number, {}, {});
}

void Input::click(PointerButton button) {
  press(button);
  release(button);
}

void Input::clickAt(ScreenPoint place, PointerButton button) {
  movePointer(place);
  click(button);
}

void Input::drag(ScreenPoint from, ScreenPoint to, const DragPace& pace) {
  beginDrag(from, to, pace);
  m_heldButtons.clear();
  fake(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(PointerButton::left), {}, pace.beforeRelease);
}

void Input::beginDrag(ScreenPoint from, ScreenPoint to, const DragPace& pace) {
  movePointer(from);
  press(PointerButton::left);
  const auto towards = [](int start, int end) { return end == start ? 0 : (end > start ? 1 : -1); };
  ScreenPoint place = from;
  for (int step = 0; step < kDepartureSteps; ++step) {
    place.x += towards(from.x, to.x) * kDepartureStepLength;
    place.y += towards(from.y, to.y) * kDepartureStepLength;
    move(place, kDeparturePace);
  }
  glidePointer(to, pace.steps, pace.betweenSteps);
}

void Input::pressKey(xcb_keysym_t key) {
  pressKeyCode(find(key).code);
}

void Input::releaseKey(xcb_keysym_t key) {
  releaseKeyCode(find(key).code);
}

void Input::typeKey(xcb_keysym_t key) {
  const Key found = find(key);
  if (found.needsShift) pressKey(XK_Shift_L);
  pressKeyCode(found.code);
  releaseKeyCode(found.code);
  if (found.needsShift) releaseKey(XK_Shift_L);
}

void Input::typeCombination(const std::vector<xcb_keysym_t>& keys) {
  for (const xcb_keysym_t key : keys)
    pressKey(key);
  for (auto key = keys.rbegin(); key != keys.rend(); ++key)
    releaseKey(*key);
}

void Input::typeText(std::string_view text) {
  // Latin-1 characters are their own keysyms.
  for (const char character : text)
    typeKey(static_cast<unsigned char>(character));
}

void Input::pressKeyCode(xcb_keycode_t code) {
  m_heldKeys.push_back(code);
  fake(XCB_KEY_PRESS, code, {}, {});
}

void Input::releaseKeyCode(xcb_keycode_t code) {
  std::erase(m_heldKeys, code);
  fake(XCB_KEY_RELEASE, code, {}, {});
}

Key Input::find(xcb_keysym_t key) const {
  // Read anew each time: a test may have changed the layout.
  if (const auto found = Keymap(m_display).find(key)) return *found;
  std::ostringstream message;
  message << "the keyboard has no keysym 0x" << std::hex << key;
  throw std::runtime_error(message.str());
}

void Input::move(ScreenPoint to, std::chrono::milliseconds delay) {
  fake(XCB_MOTION_NOTIFY, kAbsolute, to, delay);
}

void Input::fake(std::uint8_t event, std::uint8_t detail, ScreenPoint place,
                 std::chrono::milliseconds delay) {
  const bool isRelativeMotion = event == XCB_MOTION_NOTIFY && detail == kRelative;
  xcb_test_fake_input(m_display.get(), event, detail, static_cast<std::uint32_t>(delay.count()),
                      isRelativeMotion ? xcb_window_t{XCB_NONE} : m_display.root(),
                      static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y), 0);
  m_display.roundTrip();
}

} // namespace orbel::test
