#include "foundation/SharedObjects.h"

#include "foundation/Log.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace orbel {

namespace {
SharedObjects* currentObjects = nullptr;
}

SharedObjects::SharedObjects() : m_earlier(std::exchange(currentObjects, this)) {}

SharedObjects::~SharedObjects() {
  // A destructor may ask for an object that is destroyed already: it is made anew and destroyed in its turn.
  while (!m_slots.empty()) {
    const auto last = std::move(m_slots.back().object);
    m_slots.pop_back();
  }
  currentObjects = m_earlier;
}

SharedObjects& SharedObjects::current() {
  if (!currentObjects) {
    Log::error("a shared object was used before its owner was set up");
    std::abort();
  }
  return *currentObjects;
}

void* SharedObjects::find(std::type_index type) const {
  const auto slot =
      std::find_if(m_slots.begin(), m_slots.end(), [type](const Slot& entry) { return entry.type == type; });
  return slot == m_slots.end() ? nullptr : slot->object.get();
}

void SharedObjects::destroy(std::type_index type) {
  const auto slot =
      std::find_if(m_slots.begin(), m_slots.end(), [type](const Slot& entry) { return entry.type == type; });
  if (slot == m_slots.end()) return;
  // Out of the list before its destructor runs, which may ask for others.
  const auto object = std::move(slot->object);
  m_slots.erase(slot);
}

} // namespace orbel
