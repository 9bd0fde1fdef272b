// Shows, after a call that may have destroyed an object, or in a block that runs later, whether the object
// still exists. The object holds a Lifetime as a member; whoever must know takes a watch of it before.
//
//   const auto life = m_lifetime.watch();
//   m_delegate->pressed();        // may destroy this object
//   if (life.hasEnded()) return;
//
// Main thread only. A watch may outlive the object and costs one reference count.
#pragma once

#include <memory>

namespace orbel {

class Lifetime {
public:
  class Watch {
  public:
    bool hasEnded() const { return m_life.expired(); }

  private:
    friend class Lifetime;
    explicit Watch(const std::shared_ptr<char>& life) : m_life(life) {}
    std::weak_ptr<char> m_life;
  };

  Lifetime() = default;
  // A copied or moved object has a life of its own.
  Lifetime(const Lifetime&) : Lifetime() {}
  Lifetime& operator=(const Lifetime&) { return *this; }

  Watch watch() const { return Watch(m_life); }

private:
  std::shared_ptr<char> m_life = std::make_shared<char>();
};

} // namespace orbel
