#include "tests/backends/qt/surface_WindowSystemFixture.h"
#include "tests/contracts/WindowSystemContract.h"

#include <X11/keysym.h>

namespace orbel::contracts {
using namespace qt;
namespace {

// The fixture of this folder without a test of its own.
class QtWindowSystemSubject : public WindowSystemFixture {
public:
  QtWindowSystemSubject() { SetUp(); }
  ~QtWindowSystemSubject() override { TearDown(); }
  void TestBody() override {}

  WindowSystem& windows() { return *system; }
  static bool waitFor(const std::function<bool()>& condition) {
    return bool(becomesTrue(condition, "the contract holds"));
  }
  using WindowSystemFixture::settle;
  static void movePointer(Point screenPoint) {
    session().input().movePointer(
        {static_cast<int>(screenPoint.x), test::VirtualDisplay::kHeight - static_cast<int>(screenPoint.y)});
  }
  static void press(PointerButton button) { session().input().press(harnessButton(button)); }
  static void release(PointerButton button) { session().input().release(harnessButton(button)); }
  static void pressEscape() { session().input().typeKey(XK_Escape); }

private:
  static test::PointerButton harnessButton(PointerButton button) {
    return button == PointerButton::primary ? test::PointerButton::left : test::PointerButton::right;
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(QtWindowSystemContractOnDisplay, WindowSystemContract, QtWindowSystemSubject);

} // namespace
} // namespace orbel::contracts
