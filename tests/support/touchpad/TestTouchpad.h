// A touchpad that only umockdev knows: in sysfs, in udev's database and as a device node whose questions
// (ioctls) are answered from the state that the test gives it, so that everything of libevdev runs. Fingers
// are put down, moved and lifted slot by slot; a frame reports the changes to the reader. Positions are
// normalised, 0 to 1 with the y axis up.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

struct _UMockdevIoctlBase;
struct _UMockdevIoctlClient;
struct _UMockdevTestbed;

namespace orbel::test {

struct AxisRange {
  int minimum = 0;
  int maximum = 0;
};

struct TestTouchpadOptions {
  std::string name = "Test Touchpad";
  int number = 5; // of the event node
  int slots = 5;  // none: the device reports one position only
  AxisRange x{100, 1300};
  AxisRange y{-400, 400};
  bool isTouchpad = true; // else udev calls it a touch screen
};

class TestTouchpad {
public:
  static constexpr int kMostSlots = 60;

  explicit TestTouchpad(_UMockdevTestbed* testbed, const TestTouchpadOptions& options = {});
  ~TestTouchpad();
  TestTouchpad(const TestTouchpad&) = delete;
  TestTouchpad& operator=(const TestTouchpad&) = delete;

  // Where the node really is.
  std::string path() const;

  // Present and announced, with no finger on it; another node than before each time.
  void plugIn();
  // Removed and announced.
  void unplug();
  // What udev reports when access rights have changed.
  void announceChange();
  // The node answers no more, before its removal has been announced.
  void breakOff();

  // Each is reported with the next frame.
  void put(int slot, int trackingId, double x, double y);
  void move(int slot, double x, double y);
  void moveRaw(int slot, int x, int y);
  void lift(int slot);
  void setTool(int slot, int tool);
  void setDistance(int slot, int distance);
  void frame();
  // The frame never reaches the reader; what follows is an overflow.
  void loseFrame();
  // Nothing but a report, and a number of them in one write.
  void emptyFrames(int count);

private:
  struct Event {
    std::uint16_t type;
    std::uint16_t code;
    std::int32_t value;
  };
  using SlotValues = std::array<std::atomic<int>, kMostSlots>;

  void setNumber(int number);
  void set(int slot, std::uint16_t code, int value);
  void write(const std::vector<Event>& events) const;
  bool answer(_UMockdevIoctlClient* client);
  std::vector<std::uint8_t> answerTo(unsigned long request, const std::uint8_t* question, std::size_t size);
  AxisRange rangeOf(std::uint16_t code) const;
  std::vector<std::uint16_t> absoluteCodes() const;

  _UMockdevTestbed* m_testbed;
  TestTouchpadOptions m_options;
  std::string m_inputPath;
  std::string m_systemPath;
  std::string m_node;
  _UMockdevIoctlBase* m_handler = nullptr;
  bool m_isPresent = false;
  int m_descriptor = -1;
  // Read by umockdev's own thread.
  std::map<std::uint16_t, SlotValues> m_slots;
  std::vector<Event> m_pending;
};

} // namespace orbel::test
