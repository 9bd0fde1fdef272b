#include "foundation/NotificationCenter.h"

#include <utility>

namespace orbel {

NotificationCenter& NotificationCenter::defaultCenter() {
  static NotificationCenter center;
  return center;
}

Registration NotificationCenter::observe(std::string name, const void* sender, Block block) {
  auto observer = std::make_shared<Observer>(Observer{std::move(name), sender, std::move(block)});
  m_observers->push_back(observer);
  return Registration([observer, observers = std::weak_ptr(m_observers)] {
    observer->ended = true;
    if (const auto list = observers.lock()) std::erase(*list, observer);
  });
}

void NotificationCenter::post(const std::string& name, const void* object,
                              PropertyList::Dictionary userInfo) {
  const Notification notification{name, object, std::move(userInfo)};
  // A copy, because a block may end its own or another observation, or begin a new one.
  const auto observers = *m_observers;
  for (const auto& observer : observers) {
    if (observer->ended || observer->name != name) continue;
    if (observer->sender && observer->sender != object) continue;
    observer->block(notification);
  }
}

} // namespace orbel
