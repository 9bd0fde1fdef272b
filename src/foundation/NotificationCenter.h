// Named notifications inside the process, delivered at once, on the main thread, in the order
// of registration.
#pragma once

#include "foundation/Observers.h"
#include "foundation/PropertyList.h"
#include "foundation/Registration.h"

#include <functional>
#include <string>

namespace orbel {

struct Notification {
  std::string name;
  const void* object = nullptr; // the sender
  PropertyList::Dictionary userInfo;
};

class NotificationCenter {
public:
  using Block = std::function<void(const Notification&)>;

  // The one that the whole process shares (SharedObjects).
  static NotificationCenter& defaultCenter();

  // Calls the block for every notification of that name, from that sender only when one is given. Destroying
  // the registration ends it, also from within the block. The center may be destroyed before
  // the registration.
  Registration observe(std::string name, const void* sender, Block block);
  void post(const std::string& name, const void* object, PropertyList::Dictionary userInfo = {});

private:
  Observers<const Notification&> m_observers;
};

} // namespace orbel
