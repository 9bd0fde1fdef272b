// The control that shows a keyboard shortcut and records a new one: clicked, it takes the next combination
// typed, checks it and keeps it or says why not. The hint area at its right end clears the shortcut or
// cancels recording. Bound to a key of the preferences store it shows and writes what is stored there.
// Geometry in points, y up. Used by the settings window. Main thread only.
#pragma once

#include "foundation/NotificationCenter.h"
#include "foundation/Registration.h"
#include "platform/KeyRecorder.h"
#include "scene/View.h"
#include "shortcut/MASShortcut.h"
#include "shortcut/ShortcutCell.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel {

class MASShortcutDefaultsObserver;

class MASShortcutView : public View {
public:
  struct ToolTip {
    Rect area; // in the view's coordinates
    std::string text;
    friend bool operator==(const ToolTip&, const ToolTip&) = default;
  };

  // The recorder of keys outlives the view.
  MASShortcutView(const Rect& frame, KeyRecorder& keyRecorder);
  ~MASShortcutView() override;

  // None for no shortcut. Every setting, also of an equal value, calls the block and the observers.
  const std::optional<MASShortcut>& shortcutValue() const { return m_shortcutValue; }
  void setShortcutValue(const std::optional<MASShortcut>& shortcut);
  void setShortcutValueChange(std::function<void(MASShortcutView&)> block) {
    m_shortcutValueChange = std::move(block);
  }
  Registration observeShortcutValue(std::function<void()> block);

  // What is shown while recording: the modifiers held so far. Empty for none.
  const std::string& shortcutPlaceholder() const { return m_shortcutPlaceholder; }
  void setShortcutPlaceholder(std::string placeholder);

  bool isEnabled() const { return m_enabled; }
  void setEnabled(bool enabled);

  // Whether it waits for a combination. One view of the process records at a time; a disabled one never does.
  bool isRecording() const { return m_recording; }
  void setRecording(bool recording);

  // Whether the pointer is over the hint area.
  bool isHinting() const { return m_hinting; }
  void setHinting(bool hinting);

  // 0 round-rect, 1 textured rounded, 2 rounded bezel; any other number keeps the bezel.
  std::uint32_t appearance() const { return m_appearance; }
  void setAppearance(std::uint32_t appearance);
  // Light by default.
  void setColorScheme(ColorScheme scheme);
  const ShortcutCell& shortcutCell() const { return m_shortcutCell; }

  Rect hintArea() const;
  Rect shortcutArea() const;
  // For the window to show; none while recording, disabled or without a shortcut.
  std::vector<ToolTip> toolTips() const;

  // The preferences key that the view is in step with; empty for none. The view must be held by a shared
  // pointer. Ending the binding puts the shortcut back that the view had before.
  std::string associatedUserDefaultsKey() const;
  void setAssociatedUserDefaultsKey(const std::string& key);

  void mouseDown(const MouseEvent& event) override;
  void mouseEntered(const MouseEvent& event) override;
  void mouseExited(const MouseEvent& event) override;
  void draw(Canvas& canvas) override;

protected:
  void frameDidChange() override { updateTrackingAreas(); }

private:
  void applyBezel();
  void updateTrackingAreas();
  void listenToKeyboard(bool listens);
  bool keyPressed(const KeyEvent& event); // whether the event is swallowed
  void refuse(const MASShortcut& shortcut, const std::string& reason);
  std::string recordingTitle() const;

  KeyRecorder& m_keyRecorder;
  ShortcutCell m_shortcutCell;
  std::optional<MASShortcut> m_shortcutValue;
  std::string m_shortcutPlaceholder;
  std::function<void(MASShortcutView&)> m_shortcutValueChange;
  NotificationCenter m_valueChanges;
  bool m_enabled = true;
  bool m_recording = false;
  bool m_hinting = false;
  std::uint32_t m_appearance = 0;
  Registration m_keyboard; // alive while recording, but for an alert
  std::unique_ptr<MASShortcutDefaultsObserver> m_defaultsObserver;
};

} // namespace orbel
