#include "bench/desktop/SummonTiming.h"

#include <chrono>
#include <stdexcept>
#include <utility>

namespace orbel::bench {

using namespace test;
using Clock = std::chrono::steady_clock;

namespace {
constexpr int kReach = 190; // on both sides of the middle: inside every disc
constexpr auto kPatienceForPicture = std::chrono::seconds(5);
constexpr int kSettledPictures = 12; // equal ones in a row

constexpr int kVisible = 8; // of 255: smaller differences are no change

// Of the pixels that the window changes, those that are as they will stay.
int finalPixels(const Picture& before, const Picture& now, const Picture& final) {
  int count = 0;
  for (int x = 0; x < before.width(); ++x) {
    const bool changes = difference(before.at({x, 0}), final.at({x, 0})) > kVisible;
    if (changes && difference(now.at({x, 0}), final.at({x, 0})) <= kVisible) ++count;
  }
  return count;
}
} // namespace

SummonTiming::SummonTiming(DesktopSession& session, std::vector<xcb_keysym_t> combination)
    : m_session(session), m_combination(std::move(combination)) {
  const ScreenPoint middle = session.screen().bounds().center();
  // Beside the middle row, where the close button and the pointer would be.
  m_row = {middle.x - kReach, middle.y - 30, 2 * kReach, 1};
  session.input().movePointer(middle);
  m_before = row();
}

Picture SummonTiming::row() const {
  return m_session.screen().capture(m_row);
}

Picture SummonTiming::settledRow(const Picture& differentFrom) const {
  const auto deadline = Clock::now() + kPatienceForPicture;
  Picture last = row();
  int equal = 0;
  while (equal < kSettledPictures || last == differentFrom) {
    if (Clock::now() > deadline) throw std::runtime_error("the window did not come");
    Picture now = row();
    equal = now == last ? equal + 1 : 0;
    last = std::move(now);
  }
  return last;
}

void SummonTiming::press() {
  for (const auto key : m_combination)
    m_session.input().pressKey(key);
}

void SummonTiming::release() {
  for (auto key = m_combination.rbegin(); key != m_combination.rend(); ++key)
    m_session.input().releaseKey(*key);
}

double SummonTiming::halfPicture() {
  for (std::size_t index = 0; index + 1 < m_combination.size(); ++index) {
    m_session.input().pressKey(m_combination[index]);
  }
  std::vector<std::pair<Clock::time_point, Picture>> seen;
  seen.reserve(4000);
  const auto start = Clock::now();
  m_session.input().pressKey(m_combination.back());
  // Pictures are compared afterwards, so that watching costs little.
  int equal = 0;
  while (equal < kSettledPictures || seen.back().second == m_before) {
    Picture now = row();
    equal = !seen.empty() && now == seen.back().second ? equal + 1 : 0;
    seen.emplace_back(Clock::now(), std::move(now));
    if (seen.back().first > start + kPatienceForPicture) throw std::runtime_error("the window did not come");
  }
  release();

  const Picture& final = seen.back().second;
  const int all = finalPixels(m_before, final, final);
  double result = 0;
  for (const auto& [time, picture] : seen) {
    if (2 * finalPixels(m_before, picture, final) < all) continue;
    result = std::chrono::duration<double, std::milli>(time - start).count();
    break;
  }
  press();
  release();
  const auto deadline = Clock::now() + kPatienceForPicture;
  while (row() != m_before) {
    if (Clock::now() > deadline) throw std::runtime_error("the window did not go");
  }
  return result;
}

} // namespace orbel::bench
