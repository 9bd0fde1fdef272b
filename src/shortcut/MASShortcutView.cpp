#include "shortcut/MASShortcutView.h"

#include "foundation/Log.h"
#include "platform/Platform.h"
#include "shortcut/MASShortcutDefaultsObserver.h"

#include <algorithm>
#include <utility>

namespace orbel {

namespace {
constexpr double kHintWidth = 23;
constexpr double kTexturedHintWidth = 25;
constexpr double kRoundedHintWidth = 26;

constexpr const char* kShortcutValue = "shortcutValue";

// The one view that records, or that asked to last.
MASShortcutView* currentRecorder = nullptr;

std::string localized(std::string_view english) {
  return Platform::current().text.localized(english);
}
} // namespace

MASShortcutView::MASShortcutView(const Rect& frame, KeyRecorder& keyRecorder)
    : View(frame), m_keyRecorder(keyRecorder) {
  applyBezel();
  updateTrackingAreas();
}

MASShortcutView::~MASShortcutView() {
  if (currentRecorder == this) currentRecorder = nullptr;
}

void MASShortcutView::setShortcutValue(const std::optional<MASShortcut>& shortcut) {
  m_shortcutValue = shortcut;
  setNeedsDisplay();
  if (m_shortcutValueChange) m_shortcutValueChange(*this);
  m_valueChanges.post(kShortcutValue, this);
}

Registration MASShortcutView::observeShortcutValue(std::function<void()> block) {
  return m_valueChanges.observe(kShortcutValue, this,
                                [block = std::move(block)](const Notification&) { block(); });
}

void MASShortcutView::setShortcutPlaceholder(std::string placeholder) {
  m_shortcutPlaceholder = std::move(placeholder);
  setNeedsDisplay();
}

void MASShortcutView::setEnabled(bool enabled) {
  if (m_enabled == enabled) return;
  m_enabled = enabled;
  m_shortcutCell.setEnabled(enabled);
  updateTrackingAreas();
  // No event reports that the pointer leaves an area that is no longer watched.
  if (!enabled) setHinting(false);
  setRecording(false);
  setNeedsDisplay();
}

void MASShortcutView::setColorScheme(ColorScheme scheme) {
  m_shortcutCell.setColorScheme(scheme);
  setNeedsDisplay();
}

void MASShortcutView::setRecording(bool recording) {
  if (recording && currentRecorder != this) {
    if (currentRecorder) currentRecorder->setRecording(false);
    currentRecorder = this;
  }
  if (recording && !m_enabled) return;
  if (m_recording == recording) return;
  m_recording = recording;
  setShortcutPlaceholder({});
  listenToKeyboard(recording);
}

void MASShortcutView::setHinting(bool hinting) {
  if (m_hinting == hinting) return;
  m_hinting = hinting;
  setNeedsDisplay();
}

void MASShortcutView::setAppearance(std::uint32_t appearance) {
  if (m_appearance == appearance) return;
  m_appearance = appearance;
  applyBezel();
  updateTrackingAreas();
  setNeedsDisplay();
}

void MASShortcutView::applyBezel() {
  switch (m_appearance) {
  case 0:
    m_shortcutCell.setBezelStyle(BezelStyle::roundRect);
    break;
  case 1:
    m_shortcutCell.setBezelStyle(BezelStyle::texturedRounded);
    break;
  case 2:
    m_shortcutCell.setBezelStyle(BezelStyle::rounded);
    break;
  default:
    break;
  }
}

Rect MASShortcutView::hintArea() const {
  const double wanted = m_appearance == 1   ? kTexturedHintWidth
                        : m_appearance == 2 ? kRoundedHintWidth
                                            : kHintWidth;
  const Rect area = bounds();
  const double width = std::min(wanted, area.size.width);
  return {area.maxX() - width, area.minY(), width, area.size.height};
}

Rect MASShortcutView::shortcutArea() const {
  const Rect area = bounds();
  return {area.minX(), area.minY(), area.size.width - hintArea().size.width, area.size.height};
}

std::vector<MASShortcutView::ToolTip> MASShortcutView::toolTips() const {
  if (!m_shortcutValue || m_recording || !m_enabled) return {};
  return {{shortcutArea(), localized("Click to record new shortcut")},
          {hintArea(), localized("Delete shortcut")}};
}

std::string MASShortcutView::associatedUserDefaultsKey() const {
  return m_defaultsObserver ? m_defaultsObserver->userDefaultsKey() : std::string();
}

void MASShortcutView::setAssociatedUserDefaultsKey(const std::string& key) {
  m_defaultsObserver.reset();
  if (key.empty()) return;
  m_defaultsObserver = std::make_unique<MASShortcutDefaultsObserver>(
      std::static_pointer_cast<MASShortcutView>(shared_from_this()), key);
}

void MASShortcutView::updateTrackingAreas() {
  setTrackingArea(m_enabled ? std::optional(hintArea()) : std::nullopt);
}

void MASShortcutView::mouseDown(const MouseEvent& event) {
  if (!m_enabled) {
    View::mouseDown(event);
    return;
  }
  const bool inHintArea = hintArea().contains(convertFromWindow(event.locationInWindow));
  if (m_recording) {
    if (inHintArea) setRecording(false);
  } else if (m_shortcutValue && inHintArea) {
    setShortcutValue(std::nullopt);
  } else {
    setRecording(true);
  }
}

void MASShortcutView::mouseEntered(const MouseEvent&) {
  setHinting(true);
}

void MASShortcutView::mouseExited(const MouseEvent&) {
  setHinting(false);
}

void MASShortcutView::listenToKeyboard(bool listens) {
  if (!listens) {
    m_keyboard.reset();
    return;
  }
  const auto weakView = weak_from_this();
  const auto view = [weakView] { return std::static_pointer_cast<MASShortcutView>(weakView.lock()); };
  auto keyboard = m_keyRecorder.record({[view](const KeyEvent& event) {
                                          const auto self = view();
                                          return self && self->keyPressed(event);
                                        },
                                        [view] {
                                          if (const auto self = view()) self->setRecording(false);
                                        }});
  if (!keyboard) Log::warning("no shortcut can be recorded: " + keyboard.cause());
  m_keyboard = std::move(keyboard).valueOr({});
  if (!m_keyboard) setRecording(false);
}

bool MASShortcutView::keyPressed(const KeyEvent& event) {
  const MASShortcut shortcut = MASShortcut::shortcutWithEvent(event);
  if (event.modifierChange) {
    setShortcutPlaceholder(shortcut.modifierFlagsString());
    return true;
  }
  if (shortcut.keyCode() == kDeleteKeyCode || shortcut.keyCode() == kForwardDeleteKeyCode) {
    setShortcutValue(std::nullopt);
    setRecording(false);
    return true;
  }
  if (shortcut.keyCode() == kEscapeKeyCode && shortcut.modifierFlags() == 0) {
    setRecording(false);
    return true;
  }
  if (shortcut.shouldBypass()) {
    setRecording(false);
    return false;
  }
  if (shortcut.keyCodeString().empty()) {
    setShortcutPlaceholder(shortcut.modifierFlagsString());
    return true;
  }
  if (!shortcut.isValid()) {
    Platform::current().windows.beep();
    return true;
  }
  if (const auto reason = shortcut.isTaken()) {
    refuse(shortcut, *reason);
    return true;
  }
  setShortcutValue(shortcut);
  setRecording(false);
  return true;
}

void MASShortcutView::refuse(const MASShortcut& shortcut, const std::string& reason) {
  constexpr std::string_view kPlaceholder = "%@";
  std::string refusal = localized("The key combination %@ cannot be used");
  if (const auto place = refusal.find(kPlaceholder); place != std::string::npos) {
    refusal.replace(place, kPlaceholder.size(), shortcut.description());
  }
  // The alert needs the keyboard and takes the focus from the window, which must not end the recording.
  listenToKeyboard(false);
  const auto weakView = weak_from_this();
  Platform::current().dialogs.runAlert({reason, refusal, localized("OK"), true}, nullptr, [weakView] {
    const auto self = std::static_pointer_cast<MASShortcutView>(weakView.lock());
    if (!self) return;
    self->setShortcutPlaceholder({});
    if (self->m_recording) self->listenToKeyboard(true);
  });
}

std::string MASShortcutView::recordingTitle() const {
  if (m_hinting) return localized(m_shortcutValue ? "Use Old Shortcut" : "Cancel");
  if (!m_shortcutPlaceholder.empty()) return m_shortcutPlaceholder;
  return localized(m_shortcutValue ? "Type New Shortcut" : "Type Shortcut");
}

void MASShortcutView::draw(Canvas& canvas) {
  if (m_recording) {
    m_shortcutCell.drawInRect(canvas, bounds(), std::string(kEscapeGlyph), TextAlignment::right,
                              ButtonState::off);
    m_shortcutCell.drawInRect(canvas, shortcutArea(), recordingTitle(), TextAlignment::center,
                              ButtonState::on);
  } else if (m_shortcutValue) {
    m_shortcutCell.drawInRect(canvas, bounds(), std::string(kDeleteGlyph), TextAlignment::right,
                              ButtonState::off);
    m_shortcutCell.drawInRect(canvas, shortcutArea(), m_shortcutValue->description(), TextAlignment::center,
                              ButtonState::off);
  } else {
    m_shortcutCell.drawInRect(canvas, bounds(), localized("Record Shortcut"), TextAlignment::center,
                              ButtonState::off);
  }
}

} // namespace orbel
