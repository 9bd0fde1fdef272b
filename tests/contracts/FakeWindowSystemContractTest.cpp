#include "tests/contracts/WindowSystemContract.h"
#include "tests/doubles/FakeWindowSystem.h"

namespace orbel::contracts {
namespace {

class FakeWindowSystemSubject {
public:
  FakeWindowSystemSubject() { m_windows.movePointer({1270, 14}); }
  WindowSystem& windows() { return m_windows; }
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

} // namespace
} // namespace orbel::contracts
