// The hand of the person at the test screen: pointer and keyboard through XTEST, which no program can
// distinguish from real devices (it gives raw events, too). Places are pixels of the root window, y down.
// Every call returns when the server has taken the event; the programs react later. Main thread.
#pragma once

#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/Keymap.h"
#include "tests/support/x11/ScreenGeometry.h"

#include <chrono>
#include <functional>
#include <string_view>
#include <vector>

namespace orbel::test {

enum class PointerButton : std::uint8_t { left = 1, middle = 2, right = 3, wheelUp = 4, wheelDown = 5 };

// How a hand drags: it sets out slowly, moves in steps, and rests a moment before the release. Drag and drop
// between programs needs that time for its messages; the pace is part of the gesture, kept by the server, and
// no test waits for a result with it.
struct DragPace {
  int steps = 12;
  std::chrono::milliseconds betweenSteps{50};
  std::chrono::milliseconds beforeRelease{150};
};

// A movement around a centre, as a hand draws it: a motion every ten milliseconds, in exactly that time
// however long the server takes for each.
struct CircularWay {
  ScreenPoint center;
  double radius = 60;
  double startDegrees = 30;  // clockwise from straight up
  double sweepDegrees = 360; // negative: counter-clockwise
  std::chrono::milliseconds duration{800};

  ScreenPoint at(double share) const; // 0 at its start, 1 at its end
};

class Input {
public:
  explicit Input(DisplayConnection& display);
  // Releases everything that is still held.
  ~Input();
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  ScreenPoint pointer() const;
  void movePointer(ScreenPoint to);
  void movePointerBy(int right, int down);
  // In a straight line, with one motion a step; the last one ends exactly at the place.
  void glidePointer(ScreenPoint to, int steps, std::chrono::milliseconds betweenSteps = {});

  // Jumps to its start first. Yields how long it took, which is more than its duration on a busy machine.
  std::chrono::milliseconds circlePointer(const CircularWay& way);
  // From where the pointer is, by the steps of a mouse: the pointer's speed and acceleration apply.
  std::chrono::milliseconds circlePointerRelatively(const CircularWay& way);

  void press(PointerButton button);
  void release(PointerButton button);
  void click(PointerButton button = PointerButton::left);
  void clickAt(ScreenPoint place, PointerButton button = PointerButton::left);
  void drag(ScreenPoint from, ScreenPoint to, const DragPace& pace = {});
  // The same up to the release, for looking at the screen in the middle of a drag; end with release().
  void beginDrag(ScreenPoint from, ScreenPoint to, const DragPace& pace = {});

  // Keys by keysym (XK_space, XK_Control_L, XK_Super_L, XK_a), found in the present layout. Throws
  // std::runtime_error for a keysym that the layout does not have.
  void pressKey(xcb_keysym_t key);
  void releaseKey(xcb_keysym_t key);
  // With Shift where the layout needs it.
  void typeKey(xcb_keysym_t key);
  // Pressed in this order, released in the opposite one: {XK_Control_L, XK_Alt_L, XK_space}.
  void typeCombination(const std::vector<xcb_keysym_t>& keys);
  // Latin-1 characters only.
  void typeText(std::string_view text);

  void pressKeyCode(xcb_keycode_t code);
  void releaseKeyCode(xcb_keycode_t code);

private:
  Key find(xcb_keysym_t key) const;
  void fake(std::uint8_t event, std::uint8_t detail, ScreenPoint place, std::chrono::milliseconds delay);
  void move(ScreenPoint to, std::chrono::milliseconds delay);
  std::chrono::milliseconds
  follow(const CircularWay& way,
         const std::function<void(ScreenPoint from, ScreenPoint to, std::chrono::milliseconds delay)>& step);

  DisplayConnection& m_display;
  std::vector<std::uint8_t> m_heldButtons;
  std::vector<xcb_keycode_t> m_heldKeys;
};

} // namespace orbel::test
