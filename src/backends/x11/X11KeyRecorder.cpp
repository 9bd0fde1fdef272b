#include "backends/x11/X11KeyRecorder.h"

#include "backends/common/VirtualKeyCodes.h"
#include "backends/x11/Connection.h"
#include "backends/x11/XcbEvent.h"
#include "foundation/Log.h"

#include <cstddef>
#include <string>
#include <utility>

namespace orbel::x11 {

namespace {

// A key that no shortcut can name still has to be reported, as one without text.
std::uint64_t virtualKeyCode(xcb_keycode_t keyCode) {
  constexpr auto kOffset = common::VirtualKeyCodes::kXKeyCodeOffset;
  if (keyCode < kOffset) return kNoKeyCode;
  return common::VirtualKeyCodes::virtualKeyCode(static_cast<std::uint16_t>(keyCode - kOffset))
      .value_or(kNoKeyCode);
}

std::string describe(xcb_grab_status_t status) {
  switch (status) {
  case XCB_GRAB_STATUS_ALREADY_GRABBED:
    return "another program holds it";
  case XCB_GRAB_STATUS_FROZEN:
    return "another program has frozen it";
  case XCB_GRAB_STATUS_NOT_VIEWABLE:
    return "the window is not on the screen";
  default:
    return "the X server refuses with status " + std::to_string(status);
  }
}

} // namespace

X11KeyRecorder::X11KeyRecorder(Connection& connection, FocusedWindow& focusedWindow)
    : m_connection(connection), m_focusedWindow(focusedWindow),
      m_xkb(XkbEvents::selectKeymapChanges(connection)), m_modifiers(ModifierMap::current(connection)),
      m_events(connection.observeEvents([this](const xcb_generic_event_t& event) { handleEvent(event); })) {}

X11KeyRecorder::~X11KeyRecorder() {
  releaseKeyboard();
  if (m_ownWindow != XCB_NONE) xcb_destroy_window(m_connection.xcb(), m_ownWindow);
  m_connection.flush();
}

Result<Registration> X11KeyRecorder::record(Handlers handlers) {
  if (m_keyboard != Keyboard::ours) {
    if (const auto taken = takeKeyboard(); !taken) return taken.failure();
  }
  const auto recording = std::make_shared<Handlers>(std::move(handlers));
  m_recording = recording;
  m_endingKey = 0;
  m_focusLoss = m_focusedWindow.observeLoss([recording] {
    // A copy: losing the focus usually ends the recording.
    if (const auto focusLost = recording->focusLost) focusLost();
  });
  return Registration([this, life = m_lifetime.watch(), recording] {
    if (!life.hasEnded()) end(recording);
  });
}

void X11KeyRecorder::end(const std::shared_ptr<Handlers>& recording) {
  if (m_recording != recording) return;
  m_recording.reset();
  m_focusLoss.reset();
  if (!m_isTelling) releaseKeyboard();
}

Result<> X11KeyRecorder::takeKeyboard() {
  const xcb_window_t focused = m_focusedWindow.current();
  // Qt does not treat a grab on the focused window as a change of the focus.
  xcb_grab_status_t status = focused == XCB_NONE ? XCB_GRAB_STATUS_NOT_VIEWABLE : grabOn(focused);
  if (status == XCB_GRAB_STATUS_ALREADY_GRABBED && m_keyboard == Keyboard::awaited) return {};
  if (status == XCB_GRAB_STATUS_ALREADY_GRABBED) {
    m_keyboard = Keyboard::awaited;
    // The window gets the focus back when a grab elsewhere ends.
    watchFocusOf(focused);
    // The keyboard may have been released before the focus events were selected.
    status = grabOn(focused);
    if (status == XCB_GRAB_STATUS_ALREADY_GRABBED) {
      Log::warning("another program holds the keyboard; the shortcut is recorded once it lets go");
      return {};
    }
  }
  xcb_window_t window = focused;
  if (status == XCB_GRAB_STATUS_NOT_VIEWABLE) {
    window = ownWindow();
    xcb_map_window(m_connection.xcb(), window);
    status = grabOn(window);
  }
  if (status == XCB_GRAB_STATUS_SUCCESS) {
    keyboardTaken(window);
    return {};
  }
  releaseKeyboard();
  return Failure{"the keyboard cannot be taken: " + describe(status)};
}

xcb_grab_status_t X11KeyRecorder::grabOn(xcb_window_t window) {
  const auto reply =
      ownReply(xcb_grab_keyboard_reply(m_connection.xcb(),
                                       xcb_grab_keyboard(m_connection.xcb(), 0, window, XCB_CURRENT_TIME,
                                                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                       nullptr));
  // No reply: the window has just been destroyed.
  return reply ? static_cast<xcb_grab_status_t>(reply->status) : XCB_GRAB_STATUS_NOT_VIEWABLE;
}

void X11KeyRecorder::watchFocusOf(xcb_window_t window) {
  if (m_watchedWindow == window) return;
  m_watchedWindow = window;
  const std::uint32_t mask = XCB_EVENT_MASK_FOCUS_CHANGE;
  xcb_change_window_attributes(m_connection.xcb(), window, XCB_CW_EVENT_MASK, &mask);
}

void X11KeyRecorder::keyboardTaken(xcb_window_t window) {
  m_keyboard = Keyboard::ours;
  m_grabWindow = window;
  // Qt waits a while before it reports the focus as lost; what is typed meanwhile belongs to another
  // program already.
  if (window != m_ownWindow) watchFocusOf(window);
  m_modifiers = ModifierMap::current(m_connection);
  if (m_xkb) m_xkb->selectModifierChanges(m_connection, true);
  m_down.reset();
  const auto keys =
      ownReply(xcb_query_keymap_reply(m_connection.xcb(), xcb_query_keymap(m_connection.xcb()), nullptr));
  for (std::size_t keyCode = 0; keys && keyCode < m_down.size(); ++keyCode)
    m_down.set(keyCode, (keys->keys[keyCode / 8] >> (keyCode % 8) & 1U) != 0);
}

void X11KeyRecorder::releaseKeyboard() {
  if (m_watchedWindow != XCB_NONE) {
    const std::uint32_t mask = XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(m_connection.xcb(), m_watchedWindow, XCB_CW_EVENT_MASK, &mask);
    m_watchedWindow = XCB_NONE;
  }
  if (m_keyboard == Keyboard::ours) {
    if (m_xkb) m_xkb->selectModifierChanges(m_connection, false);
    xcb_ungrab_keyboard(m_connection.xcb(), XCB_CURRENT_TIME);
  }
  if (m_ownWindow != XCB_NONE) xcb_unmap_window(m_connection.xcb(), m_ownWindow);
  m_connection.flush();
  m_keyboard = Keyboard::free;
  m_grabWindow = XCB_NONE;
  m_endingKey = 0;
}

xcb_window_t X11KeyRecorder::ownWindow() {
  if (m_ownWindow != XCB_NONE) return m_ownWindow;
  m_ownWindow = xcb_generate_id(m_connection.xcb());
  const std::uint32_t overridesRedirect = 1;
  xcb_create_window(m_connection.xcb(), XCB_COPY_FROM_PARENT, m_ownWindow, m_connection.root(), -1, -1, 1, 1,
                    0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                    &overridesRedirect);
  return m_ownWindow;
}

void X11KeyRecorder::handleEvent(const xcb_generic_event_t& event) {
  if (m_keyboard == Keyboard::free) return;
  switch (eventType(event)) {
  case XCB_KEY_PRESS:
    handlePress(reinterpret_cast<const xcb_key_press_event_t&>(event));
    return;
  case XCB_KEY_RELEASE:
    handleRelease(reinterpret_cast<const xcb_key_release_event_t&>(event));
    return;
  case XCB_FOCUS_IN:
    handleFocusIn(reinterpret_cast<const xcb_focus_in_event_t&>(event));
    return;
  case XCB_FOCUS_OUT:
    handleFocusOut(reinterpret_cast<const xcb_focus_out_event_t&>(event));
    return;
  default:
    if (!m_xkb) return;
    if (const auto change = m_xkb->modifierChange(event)) handleModifiers(*change);
  }
}

void X11KeyRecorder::handleFocusIn(const xcb_focus_in_event_t& focusIn) {
  if (m_keyboard != Keyboard::awaited || focusIn.mode != XCB_NOTIFY_MODE_UNGRAB) return;
  const auto taken = takeKeyboard();
  if (taken) return;
  Log::warning(taken.cause());
  tellFocusLoss();
}

void X11KeyRecorder::handleFocusOut(const xcb_focus_out_event_t& focusOut) {
  if (m_keyboard != Keyboard::ours || focusOut.event != m_grabWindow) return;
  // Grabs begin and end without a move of the focus.
  const bool hasMoved =
      focusOut.mode == XCB_NOTIFY_MODE_NORMAL || focusOut.mode == XCB_NOTIFY_MODE_WHILE_GRABBED;
  const bool isWithin =
      focusOut.detail == XCB_NOTIFY_DETAIL_INFERIOR || focusOut.detail == XCB_NOTIFY_DETAIL_POINTER;
  if (!hasMoved || isWithin) return;
  if (m_recording)
    tellFocusLoss();
  else
    releaseKeyboard(); // the ending key's release is sent elsewhere
}

void X11KeyRecorder::tellFocusLoss() {
  const auto recording = m_recording; // ends within the call
  if (recording && recording->focusLost) recording->focusLost();
}

void X11KeyRecorder::handlePress(const xcb_key_press_event_t& press) {
  if (m_keyboard != Keyboard::ours || press.event != m_grabWindow) return;
  if (m_down[press.detail]) return; // the keyboard repeats it
  m_down.set(press.detail);
  if (!m_recording || m_modifiers.isModifierKey(press.detail)) return;

  const auto recording = m_recording; // may end within the call
  m_isTelling = true;
  const bool isSwallowed =
      recording->keyPressed({virtualKeyCode(press.detail), m_modifiers.modifierFlags(press.state)});
  m_isTelling = false;
  if (!isSwallowed) passOn(press);
  if (m_recording) return;
  if (isSwallowed && m_keyboard == Keyboard::ours)
    m_endingKey = press.detail;
  else
    releaseKeyboard();
}

void X11KeyRecorder::handleRelease(const xcb_key_release_event_t& release) {
  m_down.reset(release.detail);
  if (!m_recording && release.detail == m_endingKey) releaseKeyboard();
}

void X11KeyRecorder::handleModifiers(const XkbEvents::ModifierChange& change) {
  if (m_keyboard != Keyboard::ours || !m_recording) return;
  const auto recording = m_recording;
  recording->keyPressed({.keyCode = virtualKeyCode(change.keyCode),
                         .modifierFlags = m_modifiers.modifierFlags(change.modifierMask),
                         .modifierChange = true});
}

void X11KeyRecorder::passOn(const xcb_key_press_event_t& press) {
  const xcb_window_t window = m_focusedWindow.current();
  if (window == XCB_NONE) return;
  xcb_key_press_event_t copy = press;
  copy.event = window;
  copy.child = XCB_NONE;
  xcb_send_event(m_connection.xcb(), 0, window, XCB_EVENT_MASK_KEY_PRESS,
                 reinterpret_cast<const char*>(&copy));
  m_connection.flush();
}

} // namespace orbel::x11
