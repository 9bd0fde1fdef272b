// The contract of videos, with the real video program.
#include "backends/qt/video/QtVideoPlayers.h"
#include "tests/contracts/VideoPlayerContract.h"

#include <QTest>

namespace orbel::contracts {
namespace {

class QtVideoPlayersSubject {
public:
  VideoPlayers& players() { return m_players; }
  static bool runUntil(const std::function<bool()>& condition) {
    constexpr int kPatience = 20000; // milliseconds
    return QTest::qWaitFor(condition, kPatience);
  }

private:
  qt::QtVideoPlayers m_players{QStringLiteral(ORBEL_VIDEO_PROGRAM)};
};

INSTANTIATE_TYPED_TEST_SUITE_P(QtVideoPlayersContract, VideoPlayerContract, QtVideoPlayersSubject);

} // namespace
} // namespace orbel::contracts
