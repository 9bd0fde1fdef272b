// The contracts of hot keys, event taps and the keyboard layout, for their doubles.
#include "tests/contracts/EventTapsContract.h"
#include "tests/contracts/HotKeysContract.h"
#include "tests/contracts/KeyboardLayoutContract.h"
#include "tests/doubles/FakeSystemServices.h"

namespace orbel::contracts {
namespace {

class FakeHotKeysSubject {
public:
  FakeHotKeys& hotKeys() { return m_hotKeys; }
  void settle() { m_hotKeys.answerAll(); }
  void typeSpace(std::uint32_t modifiers) { m_hotKeys.press(kSpace, modifiers); }
  bool otherProgramGrabsSpace(std::uint32_t modifiers) {
    for (const auto& entry : m_hotKeys.registered())
      if (entry.keyCode == kSpace && entry.modifiers == modifiers) return false;
    return m_hotKeys.takenByOthers.insert({kSpace, modifiers}).second;
  }

private:
  static constexpr std::uint64_t kSpace = 49;
  FakeHotKeys m_hotKeys;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeHotKeysContract, HotKeysContract, FakeHotKeysSubject);

// A desktop that takes its time, and keeps to itself what others hold.
class FakeLateHotKeysSubject : public FakeHotKeysSubject {
public:
  FakeLateHotKeysSubject() {
    hotKeys().answersLater = true;
    hotKeys().tellsWhatIsTaken = false;
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeLateHotKeysContract, HotKeysContract, FakeLateHotKeysSubject);

class FakeEventTapsSubject {
public:
  EventTaps& taps() { return m_taps; }
  void clickPrimaryButton() { m_taps.mouseUp(); }
  void clickSecondaryButton() {} // no tap of the double receives it
  void movePointer() { m_taps.mouseMoved(); }
  void dragPointer() { m_taps.mouseUp(); } // at its end
  void passInterval() {}                   // it leaves none out

private:
  FakeEventTaps m_taps;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeEventTapsContract, EventTapsContract, FakeEventTapsSubject);

class FakeKeyboardLayoutSubject {
public:
  FakeKeyboardLayoutSubject() { m_layout.texts = {{1, "s"}, {6, "z"}, {18, "1"}, {50, "`"}}; }
  KeyboardLayout& layout() { return m_layout; }
  void switchToGerman() { m_layout.texts = {{1, "s"}, {6, "y"}, {18, "1"}, {50, "^"}}; }
  void holdShift() {} // the double knows of no modifiers

private:
  FakeKeyboardLayout m_layout;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeKeyboardLayoutContract, KeyboardLayoutContract, FakeKeyboardLayoutSubject);

} // namespace
} // namespace orbel::contracts
