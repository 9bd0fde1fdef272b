// The contract of the programs' windows, on an X server of the test's own without a window manager.
#include "tests/backends/x11/support/WindowsTest.h"
#include "tests/contracts/TopLevelWindowsContract.h"

#include <map>

namespace orbel::contracts {
namespace {

// The fixture of this folder without a test of its own.
class X11TopLevelWindowsSubject : public test::WindowsTest {
public:
  X11TopLevelWindowsSubject() { SetUp(); }
  ~X11TopLevelWindowsSubject() override {
    m_programs.clear();
    TearDown();
  }
  void TestBody() override {}

  using WindowsTest::windows;
  std::uint64_t open(const std::string& className) {
    auto program =
        otherClient({"--class", className, className, "--at",
                     std::to_string(10 + 250 * static_cast<int>(m_programs.size())), "50", "--window"});
    const std::uint64_t id = program->window();
    m_programs[id] = std::move(program);
    EXPECT_TRUE(test::iterateUntil([&] { return window(id) && window(id)->className == className; }));
    test::iterateWhatIsPending();
    return id;
  }
  void close(std::uint64_t id) {
    m_programs.erase(id);
    EXPECT_TRUE(test::iterateUntil([&] { return !isListed(id); }));
    test::iterateWhatIsPending();
  }
  std::int32_t processOf(std::uint64_t id) { return m_programs.at(id)->processIdentifier(); }
  bool becomesActive(std::uint64_t id) {
    return test::iterateUntil([&] { return isActive(id); });
  }

private:
  std::map<std::uint64_t, std::unique_ptr<test::OtherClient>> m_programs;
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11TopLevelWindowsContract, TopLevelWindowsContract,
                               X11TopLevelWindowsSubject);

} // namespace
} // namespace orbel::contracts
