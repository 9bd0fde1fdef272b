// A keyboard that the test types on; without a recording nothing receives its keys.
#pragma once

#include "platform/KeyRecorder.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace orbel {

class FakeKeyRecorder : public KeyRecorder {
public:
  enum class Delivery { nobody, swallowed, passedOn };

  Result<Registration> record(Handlers handlers) override {
    if (!recordSucceeds) return Failure{"the keyboard is held"};
    ++recordings;
    auto entry = std::make_shared<Handlers>(std::move(handlers));
    *m_current = entry;
    return Registration([entry, current = m_current] {
      if (*current == entry) current->reset();
    });
  }

  bool isRecording() const { return static_cast<bool>(*m_current); }
  Delivery type(const KeyEvent& event) const {
    const auto handlers = *m_current; // lives on when the recording ends within the handler
    if (!handlers) return Delivery::nobody;
    return handlers->keyPressed(event) ? Delivery::swallowed : Delivery::passedOn;
  }
  Delivery type(std::uint64_t keyCode, std::uint64_t modifierFlags) const {
    return type({keyCode, modifierFlags});
  }
  Delivery holdModifiers(std::uint64_t modifierFlags) const { return type({55, modifierFlags, true}); }
  void loseFocus() const {
    if (const auto handlers = *m_current) handlers->focusLost();
  }

  bool recordSucceeds = true;
  int recordings = 0;

private:
  std::shared_ptr<std::shared_ptr<Handlers>> m_current = std::make_shared<std::shared_ptr<Handlers>>();
};

} // namespace orbel
