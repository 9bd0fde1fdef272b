#include "backends/evdev/Touchpad.h"

#include "foundation/Log.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <unistd.h>
#include <utility>

namespace orbel::evdev {

namespace {

// Before the others get their turn: a faulty touchpad that never stops sending must not block the loop.
constexpr int kEventsAtOnce = 2048;

void logMessage(const libevdev*, libevdev_log_priority, void*, const char*, int, const char*,
                const char* format, va_list arguments) {
  char text[256];
  std::vsnprintf(text, sizeof text, format, arguments);
  std::string message(text);
  while (message.ends_with('\n'))
    message.pop_back();
  Log::warning("touchpad: " + message);
}

} // namespace

double Touchpad::Axis::normalized(int value) const {
  return std::clamp((value - minimum) / range, 0.0, 1.0);
}

Result<std::shared_ptr<Touchpad>> Touchpad::open(const TouchpadDevice& device, std::int32_t number,
                                                 Handlers handlers) {
  const int descriptor = ::open(device.node.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return Failure{std::strerror(errno)};
  libevdev* kernelDevice = libevdev_new();
  libevdev_set_device_log_function(kernelDevice, logMessage, LIBEVDEV_LOG_ERROR, nullptr);
  std::shared_ptr<Touchpad> touchpad(new Touchpad(descriptor, kernelDevice, number, std::move(handlers)));
  if (const int status = libevdev_set_fd(kernelDevice, descriptor); status < 0)
    return Failure{std::strerror(-status)};
  if (const auto axes = touchpad->readAxes(); !axes) return axes.failure();
  touchpad->m_systemPath = device.systemPath;
  touchpad->m_watch = std::make_unique<DescriptorWatch>(
      descriptor, [pad = touchpad.get()](auto state) { return pad->readEvents(state); });
  return touchpad;
}

Touchpad::Touchpad(int descriptor, libevdev* device, std::int32_t number, Handlers handlers)
    : m_descriptor(descriptor), m_device(device), m_number(number), m_handlers(std::move(handlers)) {}

Touchpad::~Touchpad() {
  close();
  libevdev_free(m_device);
  ::close(m_descriptor);
}

Result<> Touchpad::readAxes() {
  const input_absinfo* x = libevdev_get_abs_info(m_device, ABS_MT_POSITION_X);
  const input_absinfo* y = libevdev_get_abs_info(m_device, ABS_MT_POSITION_Y);
  m_slotCount = libevdev_get_num_slots(m_device);
  if (!x || !y || m_slotCount <= 0) return Failure{"it does not tell where each finger is"};
  if (x->maximum <= x->minimum || y->maximum <= y->minimum)
    return Failure{"it does not tell how large it is"};
  m_x = {static_cast<double>(x->minimum), static_cast<double>(x->maximum) - x->minimum};
  m_y = {static_cast<double>(y->minimum), static_cast<double>(y->maximum) - y->minimum};
  if (const input_absinfo* distance = libevdev_get_abs_info(m_device, ABS_MT_DISTANCE))
    m_nearestDistance = distance->minimum;
  m_touches.reserve(static_cast<std::size_t>(m_slotCount));
  m_reported.reserve(static_cast<std::size_t>(m_slotCount));
  return {};
}

DescriptorWatch::Rest Touchpad::readEvents(DescriptorWatch::State state) {
  const auto self = shared_from_this(); // a handler may release the pad
  for (int count = 0; count < kEventsAtOnce && m_watch; ++count) {
    input_event event{};
    const int status = libevdev_next_event(
        m_device, m_isSynchronizing ? LIBEVDEV_READ_FLAG_SYNC : LIBEVDEV_READ_FLAG_NORMAL, &event);
    if (status == -EAGAIN) {
      // The end of what was lost, or of what there is to read.
      if (std::exchange(m_isSynchronizing, false)) continue;
      if (state == DescriptorWatch::State::hungUp) vanish();
      return DescriptorWatch::Rest::none;
    } else if (status == LIBEVDEV_READ_STATUS_SYNC && !m_isSynchronizing) {
      m_isSynchronizing = true;
    } else if (status < 0 && status != -EINTR) {
      if (status != -ENODEV)
        Log::warning("a touchpad cannot be read any more: " + std::string(std::strerror(-status)));
      vanish();
    } else if (status >= 0 && event.type == EV_SYN && event.code == SYN_REPORT) {
      report();
    }
  }
  return m_watch ? DescriptorWatch::Rest::some : DescriptorWatch::Rest::none;
}

void Touchpad::report() {
  m_touches.clear();
  for (unsigned slot = 0; slot < static_cast<unsigned>(m_slotCount); ++slot) {
    if (!isFinger(slot)) continue;
    const auto trackingId =
        static_cast<std::uint32_t>(libevdev_get_slot_value(m_device, slot, ABS_MT_TRACKING_ID));
    const std::int64_t identity = (std::int64_t{m_number} << 32) | trackingId;
    // One contact has one tracking id; a pad that reports it in two slots is wrong about the second.
    if (isKnown(identity)) continue;
    const double x = m_x.normalized(libevdev_get_slot_value(m_device, slot, ABS_MT_POSITION_X));
    const double y = m_y.normalized(libevdev_get_slot_value(m_device, slot, ABS_MT_POSITION_Y));
    m_touches.push_back({identity, {x, 1 - y}});
  }
  const auto isSame = [](const Touch& left, const Touch& right) {
    return left.identity == right.identity && left.normalizedPosition == right.normalizedPosition;
  };
  // The pad reports changes of pressure, sizes and buttons, too.
  if (std::equal(m_touches.begin(), m_touches.end(), m_reported.begin(), m_reported.end(), isSame)) return;
  m_reported = m_touches;
  m_handlers.touchesChanged(m_reported);
}

bool Touchpad::isFinger(unsigned slot) const {
  return libevdev_get_slot_value(m_device, slot, ABS_MT_TRACKING_ID) >= 0 &&
         libevdev_get_slot_value(m_device, slot, ABS_MT_TOOL_TYPE) == MT_TOOL_FINGER &&
         libevdev_get_slot_value(m_device, slot, ABS_MT_DISTANCE) <= m_nearestDistance;
}

bool Touchpad::isKnown(std::int64_t identity) const {
  return std::any_of(m_touches.begin(), m_touches.end(),
                     [identity](const Touch& touch) { return touch.identity == identity; });
}

void Touchpad::close() {
  m_watch.reset();
}

void Touchpad::vanish() {
  if (!m_watch) return;
  const auto self = shared_from_this();
  close();
  const bool hadTouches = !m_reported.empty();
  m_reported.clear();
  if (hadTouches) m_handlers.touchesChanged(m_reported);
  m_handlers.vanished();
}

} // namespace orbel::evdev
