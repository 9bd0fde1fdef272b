// One open touchpad: turns the kernel's multi-touch slots into touches, a whole frame at a time. Positions
// are normalised by the ranges of the pad's axes, 0 to 1 with the y axis up, and clamped to them. Palms,
// hovering fingers and tools other than fingers are no touches. What was lost in an overflow is asked of the
// kernel. Owned by the touchpad tap; main thread.
#pragma once

#include "backends/evdev/DescriptorWatch.h"
#include "backends/evdev/TouchpadDevice.h"
#include "foundation/Result.h"
#include "platform/EventTaps.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct input_absinfo;
struct libevdev;

namespace orbel::evdev {

class Touchpad : public std::enable_shared_from_this<Touchpad> {
public:
  struct Handlers {
    // All fingers now on this pad, whenever one touched, lifted or moved.
    std::function<void(const std::vector<Touch>&)> touchesChanged;
    // It has been unplugged or broke; all fingers have been reported as lifted before. Nothing follows.
    std::function<void()> vanished;
  };

  // Opens and reads it from then on. `number` distinguishes its fingers from those of every other touchpad.
  // Fails when it cannot be read or is none that reports single fingers.
  static Result<std::shared_ptr<Touchpad>> open(const TouchpadDevice& device, std::int32_t number,
                                                Handlers handlers);
  ~Touchpad();
  Touchpad(const Touchpad&) = delete;
  Touchpad& operator=(const Touchpad&) = delete;

  const std::string& systemPath() const { return m_systemPath; }
  // How many fingers at once it can distinguish.
  int slotCount() const { return m_slotCount; }
  // Reports nothing any more. May be called from a handler.
  void close();
  // All fingers are lifted and the pad is closed.
  void vanish();

private:
  struct Axis {
    double minimum = 0;
    double range = 1;
    double normalized(int value) const;
  };

  Touchpad(int descriptor, libevdev* device, std::int32_t number, Handlers handlers);
  Result<> readAxes();
  DescriptorWatch::Rest readEvents(DescriptorWatch::State state);
  void report();
  bool isFinger(unsigned slot) const;
  bool isKnown(std::int64_t identity) const;

  std::string m_systemPath;
  int m_descriptor;
  libevdev* m_device;
  std::int32_t m_number;
  Handlers m_handlers;
  Axis m_x;
  Axis m_y;
  int m_slotCount = 0;
  int m_nearestDistance = 0; // the distance reported of a finger that touches
  bool m_isSynchronizing = false;
  std::vector<Touch> m_touches;
  std::vector<Touch> m_reported;
  std::unique_ptr<DescriptorWatch> m_watch; // none once closed
};

} // namespace orbel::evdev
