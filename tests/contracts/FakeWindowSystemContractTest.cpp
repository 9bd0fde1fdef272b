#include "tests/contracts/WindowSystemContract.h"
#include "tests/doubles/FakeWindowSystem.h"

namespace orbel::contracts {
namespace {

class FakeWindowSystemSubject {
public:
  FakeWindowSystemSubject() { m_windows.movePointer({1270, 14}); }
  FakeWindowSystem& windows() { return m_windows; }
  bool waitFor(const std::function<bool()>& condition) {
    settle();
    return condition();
  }
  void settle() {
    for (FakeSurface* surface : m_windows.surfaces)
      surface->paintDamage();
  }
  void movePointer(Point screenPoint) { m_windows.movePointer(screenPoint); }
  void press(PointerButton button) { m_windows.press(button); }
  void release(PointerButton button) { m_windows.release(button); }
  void pressEscape() { m_windows.pressEscape(); }

private:
  FakeWindowSystem m_windows;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeWindowSystemContract, WindowSystemContract, FakeWindowSystemSubject);

// A display that learns of the pointer with its first movement over a surface, and guesses until then.
class FakeLatePointerSubject : public FakeWindowSystemSubject {
public:
  FakeLatePointerSubject() { windows().pointer.reset(); }
  bool waitFor(const std::function<bool()>& condition) {
    settle();
    return condition();
  }
  void settle() {
    FakeWindowSystemSubject::settle();
    if (!windows().pointer) windows().guessPointer({640, 512});
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeLatePointerContract, WindowSystemContract, FakeLatePointerSubject);

} // namespace
} // namespace orbel::contracts
