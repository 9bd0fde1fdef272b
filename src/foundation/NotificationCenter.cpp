#include "foundation/NotificationCenter.h"

#include "foundation/SharedObjects.h"

#include <utility>

namespace orbel {

NotificationCenter& NotificationCenter::defaultCenter() {
  return SharedObjects::current().get<NotificationCenter>();
}

Registration NotificationCenter::observe(std::string name, const void* sender, Block block) {
  return m_observers.add(
      [name = std::move(name), sender, block = std::move(block)](const Notification& notification) {
        if (notification.name != name || (sender && sender != notification.object)) return;
        block(notification);
      });
}

void NotificationCenter::post(const std::string& name, const void* object,
                              PropertyList::Dictionary userInfo) {
  m_observers.notify({name, object, std::move(userInfo)});
}

} // namespace orbel
