// Takes the whole keyboard by an active grab while a shortcut is recorded. Combinations that the desktop,
// other programs or we ourselves hold come here and do not act. The server ends the grab with the program,
// however that ends. Keys are identified by where they are, whatever the layout. Uses the connection of the
// hot keys, whose grab that is active it replaces.
#pragma once

#include "backends/x11/FocusedWindow.h"
#include "backends/x11/ModifierMap.h"
#include "backends/x11/XkbEvents.h"
#include "foundation/Lifetime.h"
#include "foundation/Registration.h"
#include "platform/KeyRecorder.h"

#include <bitset>
#include <memory>
#include <optional>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class X11KeyRecorder : public KeyRecorder {
public:
  X11KeyRecorder(Connection& connection, FocusedWindow& focusedWindow);
  ~X11KeyRecorder() override;
  X11KeyRecorder(const X11KeyRecorder&) = delete;
  X11KeyRecorder& operator=(const X11KeyRecorder&) = delete;

  // A later recording replaces an earlier one. While another program holds the keyboard the recording waits
  // until that program releases it (logged); without a focused window no event would announce that, so then
  // it fails. A key that is held when the recording starts is reported only when it is pressed again. The key
  // that ends a recording stays ours until it is released or the window loses the focus, so that its
  // repetitions reach no other program.
  Result<Registration> record(Handlers handlers) override;

private:
  enum class Keyboard { free, awaited, ours };

  void handleEvent(const xcb_generic_event_t& event);
  void handleFocusIn(const xcb_focus_in_event_t& focusIn);
  void handleFocusOut(const xcb_focus_out_event_t& focusOut);
  void tellFocusLoss();
  void handlePress(const xcb_key_press_event_t& press);
  void handleRelease(const xcb_key_release_event_t& release);
  void handleModifiers(const XkbEvents::ModifierChange& change);
  void passOn(const xcb_key_press_event_t& press);

  Result<> takeKeyboard(); // it is ours, or will be
  xcb_grab_status_t grabOn(xcb_window_t window);
  void watchFocusOf(xcb_window_t window);
  void keyboardTaken(xcb_window_t window);
  void end(const std::shared_ptr<Handlers>& recording);
  void releaseKeyboard();
  xcb_window_t ownWindow();

  Connection& m_connection;
  FocusedWindow& m_focusedWindow;
  std::optional<XkbEvents> m_xkb;
  ModifierMap m_modifiers; // as of the beginning of the recording
  std::shared_ptr<Handlers> m_recording;
  Keyboard m_keyboard = Keyboard::free;
  xcb_window_t m_grabWindow = XCB_NONE;
  xcb_window_t m_watchedWindow = XCB_NONE; // its focus events are selected
  xcb_window_t m_ownWindow = XCB_NONE;     // never seen; for when no window of ours has the focus
  std::bitset<256> m_down;                 // key codes
  xcb_keycode_t m_endingKey = 0;           // pressed and being reported, or awaited to be released
  bool m_isTelling = false;
  Registration m_focusLoss;
  Registration m_events;
  Lifetime m_lifetime; // registrations may outlive us
};

} // namespace orbel::x11
