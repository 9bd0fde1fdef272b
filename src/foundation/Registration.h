// A handle for something registered; destroying it unregisters. Move-only. Every observer, tap, tick and hot
// key is one.
#pragma once

#include <functional>
#include <utility>

namespace orbel {

class [[nodiscard]] Registration {
public:
  Registration() = default;
  explicit Registration(std::function<void()> unregister) : m_unregister(std::move(unregister)) {}
  ~Registration() { reset(); }

  Registration(Registration&& other) noexcept : m_unregister(std::exchange(other.m_unregister, nullptr)) {}
  Registration& operator=(Registration&& other) noexcept {
    if (this != &other) {
      reset();
      m_unregister = std::exchange(other.m_unregister, nullptr);
    }
    return *this;
  }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;

  // Unregisters now. Safe while the registered callback runs.
  void reset() {
    if (auto unregister = std::exchange(m_unregister, nullptr)) unregister();
  }
  explicit operator bool() const { return static_cast<bool>(m_unregister); }

private:
  std::function<void()> m_unregister;
};

} // namespace orbel
