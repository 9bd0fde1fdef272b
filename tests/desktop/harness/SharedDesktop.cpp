#include "tests/desktop/harness/SharedDesktop.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace orbel::test {

namespace {

struct Waiting {
  DesktopSessionOptions options;
  std::unique_ptr<DesktopSession> session;
};

// Those that no case uses now. Never destroyed as an object: a case may fork, and the child that ends must
// not end the desktops of its parent.
std::vector<Waiting>& waitingDesktops() {
  static auto& desktops = *new std::vector<Waiting>;
  return desktops;
}

class EndOfAllDesktops : public testing::Environment {
public:
  void TearDown() override { waitingDesktops().clear(); }
};

[[maybe_unused]] const testing::Environment* const kEnd =
    testing::AddGlobalTestEnvironment(new EndOfAllDesktops);

} // namespace

SharedDesktop::SharedDesktop(const DesktopSessionOptions& options) : m_options(options) {
  auto& desktops = waitingDesktops();
  const auto found = std::find_if(desktops.begin(), desktops.end(),
                                  [&](const Waiting& waiting) { return waiting.options == options; });
  if (found == desktops.end()) {
    m_session = std::make_unique<DesktopSession>(options);
    return;
  }
  m_session = std::move(found->session);
  desktops.erase(found);
}

SharedDesktop::~SharedDesktop() {
  if (testing::Test::HasFailure() || !m_session->restore()) return;
  waitingDesktops().push_back({m_options, std::move(m_session)});
}

} // namespace orbel::test
