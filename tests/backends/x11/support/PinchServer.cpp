#include "tests/backends/x11/support/PinchServer.h"

#include "tests/support/base/AnnouncedLine.h"
#include "tests/support/base/TextFile.h"
#include "tests/support/base/Waiting.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xinput.h>

namespace orbel::test {

namespace {

constexpr const char* kServer = "/usr/lib/xorg/Xorg";
constexpr std::uint16_t kTwoFingers = 2;

std::string configuration(const std::string& socket) {
  return R"(Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "AutoEnableDevices" "false"
  Option "DontVTSwitch" "true"
EndSection
Section "Device"
  Identifier "card"
  Driver "dummy"
EndSection
Section "Screen"
  Identifier "screen"
  Device "card"
  DefaultDepth 24
EndSection
Section "InputDevice"
  Identifier "touchpad"
  Driver "inputtest"
  Option "DeviceType" "PointerGesture"
  Option "SocketPath" ")" +
         socket + R"("
EndSection
Section "ServerLayout"
  Identifier "layout"
  Screen "screen"
  InputDevice "touchpad" "CorePointer"
EndSection
)";
}

} // namespace

PinchServer::PinchServer() {
  if (access(kServer, X_OK) != 0) {
    m_problem = std::string(kServer) + " is not installed";
    return;
  }
  const std::filesystem::path folder = m_folder.path();
  writeFile(folder / "xorg.conf", configuration(folder / "touchpad"));
  AnnouncedLine announcement;
  m_server.emplace(
      ProcessDescription{.command = {kServer, "-displayfd", std::to_string(announcement.writeEnd()),
                                     "-config", folder / "xorg.conf", "-logfile", folder / "log", "-quiet",
                                     "-noreset", "-nolisten", "tcp", "-sharevts", "-novtswitch"},
                         .environment = {{"PATH", "/usr/bin:/bin"}},
                         .handedDescriptor = announcement.writeEnd()});
  const auto number = announcement.read(kPatience);
  if (!number) {
    m_problem = "the X server does not start without a console";
  } else if (!connectToTouchpad()) {
    m_problem = "the X server has no driver for input tests";
  } else {
    m_display = ':' + *number;
  }
}

PinchServer::~PinchServer() {
  if (m_socket >= 0) close(m_socket);
}

bool PinchServer::connectToTouchpad() {
  m_socket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = m_folder.path() / "touchpad";
  path.copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
  if (connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return false;
  struct Version {
    Header header{};
    std::uint16_t major = 1;
    std::uint16_t minor = 1;
  };
  send(Version(), EventType::clientVersion);
  return receive();
}

void PinchServer::beginPinch() {
  sendPinch(XCB_INPUT_GESTURE_PINCH_BEGIN, 1);
}

void PinchServer::pinch(double scale) {
  sendPinch(XCB_INPUT_GESTURE_PINCH_UPDATE, scale);
}

void PinchServer::endPinch(double scale) {
  sendPinch(XCB_INPUT_GESTURE_PINCH_END, scale);
}

void PinchServer::sendPinch(std::uint16_t gestureType, double scale) {
  struct Pinch {
    Header header{};
    std::uint16_t gestureType = 0;
    std::uint16_t touchCount = kTwoFingers;
    std::uint32_t flags = 0;
    double deltaX = 0;
    double deltaY = 0;
    double unacceleratedDeltaX = 0;
    double unacceleratedDeltaY = 0;
    double scale = 1;
    double deltaAngle = 0;
  } message;
  message.gestureType = gestureType;
  message.scale = scale;
  send(message, EventType::pinch);
  struct Sync {
    Header header{};
  };
  send(Sync(), EventType::waitForSync);
  if (!receive()) throw std::runtime_error("the X server does not answer");
}

template <class Message>
void PinchServer::send(Message message, EventType type) {
  message.header = {sizeof message, type};
  if (write(m_socket, &message, sizeof message) != static_cast<ssize_t>(sizeof message))
    throw std::runtime_error("the X server takes no gestures");
}

bool PinchServer::receive() {
  // Every answer begins with its length.
  std::uint32_t length = 0;
  if (recv(m_socket, &length, sizeof length, MSG_WAITALL) != static_cast<ssize_t>(sizeof length))
    return false;
  std::array<char, 64> rest{};
  const auto left = static_cast<ssize_t>(length - sizeof length);
  return length > sizeof length && length <= rest.size() &&
         recv(m_socket, rest.data(), static_cast<std::size_t>(left), MSG_WAITALL) == left;
}

} // namespace orbel::test
