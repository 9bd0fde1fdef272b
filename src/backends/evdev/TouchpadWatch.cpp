#include "backends/evdev/TouchpadWatch.h"

#include "backends/evdev/UdevPointers.h"
#include "foundation/Log.h"

#include <string_view>
#include <utility>

namespace orbel::evdev {

namespace {

constexpr const char* kSubsystem = "input";
constexpr const char* kTouchpadProperty = "ID_INPUT_TOUCHPAD";

std::string text(const char* value) {
  return value ? value : "";
}

// A touchpad has several nodes; the kernel's event node is the one with the touches.
bool isEventNode(udev_device& device) {
  return std::string_view(text(udev_device_get_sysname(&device))).starts_with("event");
}

bool isTouchpad(udev_device& device) {
  return isEventNode(device) && udev_device_get_devnode(&device) &&
         text(udev_device_get_property_value(&device, kTouchpadProperty)) == "1";
}

TouchpadDevice describe(udev_device& device) {
  udev_device* input = udev_device_get_parent(&device); // owned by its child
  return {text(udev_device_get_syspath(&device)), text(udev_device_get_devnode(&device)),
          input ? text(udev_device_get_sysattr_value(input, "name")) : ""};
}

} // namespace

std::vector<TouchpadDevice> TouchpadWatch::present() {
  const UdevPointer<udev> context(udev_new());
  const UdevPointer<udev_enumerate> search(context ? udev_enumerate_new(context.get()) : nullptr);
  if (!search) return {};
  udev_enumerate_add_match_subsystem(search.get(), kSubsystem);
  udev_enumerate_add_match_property(search.get(), kTouchpadProperty, "1");
  udev_enumerate_scan_devices(search.get());
  std::vector<TouchpadDevice> found;
  for (udev_list_entry* entry = udev_enumerate_get_list_entry(search.get()); entry;
       entry = udev_list_entry_get_next(entry)) {
    const UdevPointer<udev_device> device(
        udev_device_new_from_syspath(context.get(), udev_list_entry_get_name(entry)));
    // It may have been unplugged since the search.
    if (device && isTouchpad(*device)) found.push_back(describe(*device));
  }
  return found;
}

TouchpadWatch::TouchpadWatch(Handlers handlers) : m_handlers(std::move(handlers)) {
  const UdevPointer<udev> context(udev_new());
  UdevPointer<udev_monitor> monitor(context ? udev_monitor_new_from_netlink(context.get(), "udev") : nullptr);
  if (!monitor || udev_monitor_filter_add_match_subsystem_devtype(monitor.get(), kSubsystem, nullptr) < 0 ||
      udev_monitor_enable_receiving(monitor.get()) < 0) {
    Log::warning("udev does not answer; touchpads that are plugged in from now on are not noticed");
    return;
  }
  m_monitor = std::move(monitor);
  m_descriptor = std::make_unique<DescriptorWatch>(
      udev_monitor_get_fd(m_monitor.get()), [this, keptMonitor = m_monitor](DescriptorWatch::State state) {
        // One event a call: what the block does may destroy it.
        const UdevPointer<udev_device> device(udev_monitor_receive_device(keptMonitor.get()));
        if (device) {
          handle(*device);
        } else if (state == DescriptorWatch::State::hungUp) {
          m_descriptor.reset();
        }
        return DescriptorWatch::Rest::none;
      });
}

TouchpadWatch::~TouchpadWatch() = default;

void TouchpadWatch::handle(udev_device& device) {
  if (!isEventNode(device)) return;
  const Handlers handlers = m_handlers; // one of them may end this watch
  // A removed one may have lost its properties: its owner knows by the path whether it is concerned.
  if (text(udev_device_get_action(&device)) == "remove") {
    handlers.gone(text(udev_device_get_syspath(&device)));
  } else if (isTouchpad(device)) {
    handlers.appeared(describe(device));
  }
}

} // namespace orbel::evdev
