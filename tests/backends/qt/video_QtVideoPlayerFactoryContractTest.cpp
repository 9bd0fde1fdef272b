// The contract of videos, with the real video program.
#include "backends/qt/video/QtVideoPlayerFactory.h"
#include "tests/contracts/VideoPlayerContract.h"

#include <QTest>

namespace orbel::contracts {
namespace {

class QtVideoPlayerFactorySubject {
public:
  VideoPlayerFactory& players() { return m_players; }
  static bool runUntil(const std::function<bool()>& condition) {
    constexpr int kPatience = 20000; // milliseconds
    return QTest::qWaitFor(condition, kPatience);
  }

private:
  qt::QtVideoPlayerFactory m_players{QStringLiteral(ORBEL_VIDEO_PROGRAM)};
};

INSTANTIATE_TYPED_TEST_SUITE_P(QtVideoPlayerFactoryContract, VideoPlayerContract,
                               QtVideoPlayerFactorySubject);

} // namespace
} // namespace orbel::contracts
