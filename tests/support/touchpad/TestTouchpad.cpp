#include "tests/support/touchpad/TestTouchpad.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <linux/input.h>
#include <stdexcept>
#include <sys/time.h>
#include <umockdev.h>
#include <unistd.h>

namespace orbel::test {

namespace {

constexpr std::uint16_t kKeys[] = {BTN_LEFT,           BTN_TOOL_FINGER,    BTN_TOOL_QUINTTAP, BTN_TOUCH,
                                   BTN_TOOL_DOUBLETAP, BTN_TOOL_TRIPLETAP, BTN_TOOL_QUADTAP};
constexpr int kReplugged = 100;
constexpr std::uint16_t kSlotCodes[] = {ABS_MT_POSITION_X, ABS_MT_POSITION_Y, ABS_MT_TRACKING_ID,
                                        ABS_MT_TOOL_TYPE, ABS_MT_DISTANCE};

template <class Codes>
std::vector<std::uint8_t> bits(const Codes& codes, std::size_t size) {
  std::vector<std::uint8_t> bytes(size);
  for (const std::uint16_t code : codes) {
    if (code / 8U < size) bytes[code / 8U] |= static_cast<std::uint8_t>(1U << (code % 8U));
  }
  return bytes;
}

template <class Value>
std::vector<std::uint8_t> bytesOf(const Value& value) {
  std::vector<std::uint8_t> bytes(sizeof value);
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

// The kernel answers most questions with the length of what it has copied, these with 0.
bool tellsLength(unsigned number) {
  return number != _IOC_NR(EVIOCGVERSION) && number != _IOC_NR(EVIOCGID) &&
         number != _IOC_NR(EVIOCGMTSLOTS(0)) && number < _IOC_NR(EVIOCGABS(0));
}

} // namespace

TestTouchpad::TestTouchpad(UMockdevTestbed* testbed, const TestTouchpadOptions& options)
    : m_testbed(testbed), m_options(options) {
  setNumber(options.number);
  for (const std::uint16_t code : kSlotCodes) {
    for (auto& value : m_slots[code])
      value = code == ABS_MT_TRACKING_ID ? -1 : 0;
  }
}

TestTouchpad::~TestTouchpad() {
  if (m_isPresent) unplug();
}

void TestTouchpad::setNumber(int value) {
  m_options.number = value;
  const std::string number = std::to_string(value);
  m_inputPath = "/devices/platform/pad/input/input" + number;
  m_systemPath = m_inputPath + "/event" + number;
  m_node = "/dev/input/event" + number;
}

std::string TestTouchpad::path() const {
  char* root = umockdev_testbed_get_root_dir(m_testbed);
  std::string path = root + m_node;
  g_free(root);
  return path;
}

void TestTouchpad::plugIn() {
  const std::string type = m_options.isTouchpad ? "ID_INPUT_TOUCHPAD=1" : "ID_INPUT_TOUCHSCREEN=1";
  const std::string description =
      "P: " + m_systemPath + "\nN: input/event" + std::to_string(m_options.number) +
      "\nE: DEVNAME=" + m_node + "\nE: SUBSYSTEM=input\nE: ID_INPUT=1\nE: " + type + "\n\nP: " + m_inputPath +
      "\nE: SUBSYSTEM=input\nE: ID_INPUT=1\nE: " + type + "\nA: name=" + m_options.name + "\n\n";
  GError* error = nullptr;
  if (!umockdev_testbed_add_from_string(m_testbed, description.c_str(), &error))
    throw std::runtime_error(error->message);
  m_handler = umockdev_ioctl_base_new();
  const auto answered = +[](UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self) -> gboolean {
    return static_cast<TestTouchpad*>(self)->answer(client) ? TRUE : FALSE;
  };
  g_signal_connect(m_handler, "handle-ioctl", G_CALLBACK(answered), this);
  if (!umockdev_testbed_attach_ioctl(m_testbed, m_node.c_str(), m_handler, &error))
    throw std::runtime_error(error->message);
  m_descriptor = umockdev_testbed_get_dev_fd(m_testbed, m_node.c_str());
  m_isPresent = true;
  umockdev_testbed_uevent(m_testbed, ("/sys" + m_systemPath).c_str(), "add");
}

void TestTouchpad::unplug() {
  umockdev_testbed_uevent(m_testbed, ("/sys" + m_systemPath).c_str(), "remove");
  umockdev_testbed_detach_ioctl(m_testbed, m_node.c_str(), nullptr);
  g_object_unref(m_handler);
  umockdev_testbed_remove_device(m_testbed, ("/sys" + m_systemPath).c_str());
  umockdev_testbed_remove_device(m_testbed, ("/sys" + m_inputPath).c_str());
  // The kernel counts on, too; a node cannot come twice in one testbed.
  setNumber(m_options.number + kReplugged);
  m_isPresent = false;
  for (auto& value : m_slots[ABS_MT_TRACKING_ID])
    value = -1;
  m_pending.clear();
}

void TestTouchpad::announceChange() {
  umockdev_testbed_uevent(m_testbed, ("/sys" + m_systemPath).c_str(), "change");
}

void TestTouchpad::breakOff() {
  // The other end of the node: whoever reads it now is notified that it has hung up.
  close(m_descriptor);
}

void TestTouchpad::put(int slot, int trackingId, double x, double y) {
  set(slot, ABS_MT_TRACKING_ID, trackingId);
  move(slot, x, y);
}

void TestTouchpad::move(int slot, double x, double y) {
  const auto raw = [](double share, AxisRange range) {
    return range.minimum + static_cast<int>(std::lround(share * (range.maximum - range.minimum)));
  };
  moveRaw(slot, raw(x, m_options.x), raw(1 - y, m_options.y));
}

void TestTouchpad::moveRaw(int slot, int x, int y) {
  set(slot, ABS_MT_POSITION_X, x);
  set(slot, ABS_MT_POSITION_Y, y);
}

void TestTouchpad::lift(int slot) {
  set(slot, ABS_MT_TRACKING_ID, -1);
}

void TestTouchpad::setTool(int slot, int tool) {
  set(slot, ABS_MT_TOOL_TYPE, tool);
}

void TestTouchpad::setDistance(int slot, int distance) {
  set(slot, ABS_MT_DISTANCE, distance);
}

void TestTouchpad::set(int slot, std::uint16_t code, int value) {
  m_slots.at(code).at(static_cast<std::size_t>(slot)) = value;
  m_pending.push_back({EV_ABS, ABS_MT_SLOT, slot});
  m_pending.push_back({EV_ABS, code, value});
}

void TestTouchpad::frame() {
  m_pending.push_back({EV_SYN, SYN_REPORT, 0});
  write(m_pending);
  m_pending.clear();
}

void TestTouchpad::loseFrame() {
  m_pending.clear();
  write({{EV_SYN, SYN_DROPPED, 0}, {EV_SYN, SYN_REPORT, 0}});
}

void TestTouchpad::emptyFrames(int count) {
  write(std::vector<Event>(static_cast<std::size_t>(count), {EV_SYN, SYN_REPORT, 0}));
}

void TestTouchpad::write(const std::vector<Event>& events) const {
  timeval now{};
  gettimeofday(&now, nullptr);
  std::vector<input_event> told;
  for (const Event& event : events) {
    input_event kernelEvent{};
    kernelEvent.input_event_sec = now.tv_sec;
    kernelEvent.input_event_usec = now.tv_usec;
    kernelEvent.type = event.type;
    kernelEvent.code = event.code;
    kernelEvent.value = event.value;
    told.push_back(kernelEvent);
  }
  const std::size_t size = told.size() * sizeof(input_event);
  if (::write(m_descriptor, told.data(), size) != static_cast<ssize_t>(size))
    throw std::runtime_error("the events do not fit into the device");
}

bool TestTouchpad::answer(UMockdevIoctlClient* client) {
  const unsigned long request = umockdev_ioctl_client_get_request(client);
  if (_IOC_TYPE(request) != 'E') return false;
  const std::size_t size = _IOC_SIZE(request);
  UMockdevIoctlData* argument =
      umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, size, nullptr);
  if (!argument) return false;
  auto bytes = answerTo(request, argument->data, size);
  if (bytes.empty()) {
    umockdev_ioctl_client_complete(client, -1, EINVAL);
  } else {
    bytes.resize(size);
    umockdev_ioctl_data_update(argument, 0, bytes.data(), static_cast<gint>(size));
    umockdev_ioctl_client_complete(client, tellsLength(_IOC_NR(request)) ? static_cast<glong>(size) : 0, 0);
  }
  g_object_unref(argument);
  return true;
}

std::vector<std::uint8_t> TestTouchpad::answerTo(unsigned long request, const std::uint8_t* question,
                                                 std::size_t size) {
  const unsigned number = _IOC_NR(request);
  if (request == EVIOCGVERSION) return bytesOf(int{EV_VERSION});
  if (request == EVIOCGID) return bytesOf(input_id{BUS_I2C, 1, 2, 3});
  if (number == _IOC_NR(EVIOCGNAME(0))) return {m_options.name.begin(), m_options.name.end()};
  if (number == _IOC_NR(EVIOCGPROP(0))) return bits(std::array<std::uint16_t, 1>{INPUT_PROP_POINTER}, size);
  if (number == _IOC_NR(EVIOCGMTSLOTS(0))) {
    std::int32_t code = 0;
    std::memcpy(&code, question, sizeof code);
    std::vector<std::int32_t> values(size / sizeof code);
    values[0] = code;
    const auto known = m_slots.find(static_cast<std::uint16_t>(code));
    for (std::size_t slot = 0; known != m_slots.end() && slot + 1 < values.size() && slot < kMostSlots;
         ++slot)
      values[slot + 1] = known->second[slot];
    std::vector<std::uint8_t> bytes(size);
    std::memcpy(bytes.data(), values.data(), size);
    return bytes;
  }
  if (number >= _IOC_NR(EVIOCGABS(0))) {
    const auto code = static_cast<std::uint16_t>(number - _IOC_NR(EVIOCGABS(0)));
    const AxisRange range = rangeOf(code);
    return bytesOf(input_absinfo{0, range.minimum, range.maximum, 0, 0, 0});
  }
  if (number >= _IOC_NR(EVIOCGBIT(0, 0))) {
    switch (number - _IOC_NR(EVIOCGBIT(0, 0))) {
    case 0:
      return bits(std::array<std::uint16_t, 3>{EV_SYN, EV_KEY, EV_ABS}, size);
    case EV_KEY:
      return bits(kKeys, size);
    case EV_ABS:
      return bits(absoluteCodes(), size);
    default:
      return std::vector<std::uint8_t>(size);
    }
  }
  if (number == _IOC_NR(EVIOCGPHYS(0)) || number == _IOC_NR(EVIOCGUNIQ(0)) ||
      number == _IOC_NR(EVIOCGKEY(0)) || number == _IOC_NR(EVIOCGLED(0)) || number == _IOC_NR(EVIOCGSW(0)))
    return std::vector<std::uint8_t>(size);
  return {};
}

AxisRange TestTouchpad::rangeOf(std::uint16_t code) const {
  switch (code) {
  case ABS_X:
  case ABS_MT_POSITION_X:
    return m_options.x;
  case ABS_Y:
  case ABS_MT_POSITION_Y:
    return m_options.y;
  case ABS_MT_SLOT:
    return {0, m_options.slots - 1};
  case ABS_MT_TRACKING_ID:
    return {0, 65535};
  case ABS_MT_TOOL_TYPE:
    return {0, MT_TOOL_MAX};
  default:
    return {0, 255};
  }
}

std::vector<std::uint16_t> TestTouchpad::absoluteCodes() const {
  std::vector<std::uint16_t> codes = {ABS_X, ABS_Y};
  if (m_options.slots == 0) return codes;
  codes.push_back(ABS_MT_SLOT);
  codes.insert(codes.end(), std::begin(kSlotCodes), std::end(kSlotCodes));
  return codes;
}

} // namespace orbel::test
