// Another program that moves the pointer a thousand times a second, as the quickest mice do, back and forth
// on a straight line, as long as it lives.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>

namespace orbel::bench {

class MovingPointer {
public:
  explicit MovingPointer(const std::string& displayName);
  ~MovingPointer();
  MovingPointer(const MovingPointer&) = delete;
  MovingPointer& operator=(const MovingPointer&) = delete;

  // How many so far: a machine that is too busy moves it less often.
  std::int64_t movements() const { return m_movements; }

private:
  void run(const std::string& displayName);

  std::atomic<bool> m_isMoving = true;
  std::atomic<std::int64_t> m_movements = 0;
  std::thread m_thread;
};

} // namespace orbel::bench
