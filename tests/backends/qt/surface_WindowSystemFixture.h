// The window system with its X11 parts on the private desktop, and a delegate that records what it receives.
#pragma once

#include "backends/qt-x11/X11DisplayServer.h"
#include "backends/qt/windows/QtWindowSystem.h"
#include "backends/x11/Connection.h"
#include "backends/x11/PassiveKeyGrabs.h"
#include "backends/x11/RawPointer.h"
#include "tests/backends/qt/TestDisplay.h"
#include "tests/doubles/FakeWindowSystem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace orbel::qt {

class RecordingDelegate : public SurfaceDelegate {
public:
  void paint(Canvas& canvas, const Rect& dirty) override {
    painted.push_back(dirty);
    if (drawing) drawing(canvas);
  }
  void pointerMoved(const MouseEvent& event) override { hear("moved", event); }
  void pointerExited(const MouseEvent& event) override { hear("exited", event); }
  void pointerPressed(PointerButton button, const MouseEvent& event) override {
    hear(button == PointerButton::primary ? "pressed primary" : "pressed secondary", event);
  }
  void pointerReleased(PointerButton button, const MouseEvent& event) override {
    hear(button == PointerButton::primary ? "released primary" : "released secondary", event);
    if (onRelease) onRelease();
  }
  void cancelRequested() override { heard.emplace_back("cancelled"); }
  DragOperation dragMoved(const DragInfo& drag) override {
    heard.emplace_back("dragged");
    carriesFiles = drag.filePaths().has_value();
    paths = drag.filePaths().value_or(std::vector<std::string>{});
    location = drag.locationInWindow();
    return dragAnswer;
  }
  void dragExited() override { heard.emplace_back("drag exited"); }
  bool dragPerformed(const DragInfo& drag) override {
    heard.emplace_back("dropped");
    dropped = drag.filePaths().value_or(std::vector<std::string>{});
    return true;
  }

  long count(const std::string& what) const { return std::count(heard.begin(), heard.end(), what); }

  std::vector<std::string> heard;
  Point location;
  std::uint64_t modifierFlags = 0;
  bool primaryButtonIsDown = false;
  std::vector<Rect> painted;
  bool carriesFiles = false;
  std::vector<std::string> paths;
  std::vector<std::string> dropped;
  DragOperation dragAnswer = DragOperation::copy;
  std::function<void(Canvas&)> drawing;
  std::function<void()> onRelease;

private:
  void hear(const char* what, const MouseEvent& event) {
    heard.emplace_back(what);
    location = event.locationInWindow;
    modifierFlags = event.modifierFlags;
    primaryButtonIsDown = event.primaryButtonIsDown;
  }
};

class WindowSystemFixture : public testing::Test {
protected:
  void SetUp() override {
    if (!testDisplay()) FAIL() << "needs the round with a display";
    // Far from every window that the tests show.
    session().input().movePointer({1270, 1010});
    m_connection = x11::Connection::open();
    m_pointerConnection = x11::Connection::open();
    m_rawPointer = std::make_unique<x11::RawPointer>(*m_pointerConnection);
    m_keyGrabs = std::make_unique<x11::PassiveKeyGrabs>(*m_connection);
    WindowSystemHooks hooks;
    hooks.drainTaps = [this] {
      if (onDrain) onDrain();
    };
    displayServer =
        std::make_unique<qtx11::X11DisplayServer>(qtx11::X11Parts{*m_connection, *m_rawPointer, *m_keyGrabs},
                                                  qtx11::X11DisplayServer::windowConnection());
    system = std::make_unique<QtWindowSystem>(*displayServer, std::move(hooks));
  }

  static test::DesktopSession& session() { return *testDisplay(); }

  // The screen's place of a device pixel, y down, in the core's points, y up.
  static Point pointAt(int x, int y) {
    return {static_cast<double>(x), test::VirtualDisplay::kHeight - static_cast<double>(y)};
  }
  static Rect squareAround(int x, int y, double side) { return Rect::centeredAt(pointAt(x, y), side); }

  std::unique_ptr<Surface> makeSurface(RecordingDelegate& delegate, const Rect& frame,
                                       SurfaceLevel level = SurfaceLevel::menu) {
    auto surface = system->makeSurface(level);
    surface->setDelegate(&delegate);
    surface->setRoundBackdrop(BackdropMaterial::darkFrost, 1);
    surface->setFrame(frame);
    return surface;
  }
  // Ours on the screen, bottom to top.
  static std::vector<xcb_window_t> ownWindows() {
    return session().windows().overrideRedirectWindowsOf(getpid());
  }
  static testing::AssertionResult showsOwnWindows(std::size_t count) {
    return becomesTrue([&] { return ownWindows().size() == count; },
                       std::to_string(count) + " windows of ours are shown");
  }
  // Everything that the server has sent until now is handled.
  void settle() {
    session().display().roundTrip();
    displayServer->flush();
    m_connection->drain();
    m_pointerConnection->drain();
    QCoreApplication::processEvents();
  }

private:
  std::unique_ptr<x11::Connection> m_connection;
  std::unique_ptr<x11::Connection> m_pointerConnection;
  std::unique_ptr<x11::RawPointer> m_rawPointer;
  std::unique_ptr<x11::PassiveKeyGrabs> m_keyGrabs;
  FakeWindowSystem m_unshown;

protected:
  // Its own points are the screen's.
  std::unique_ptr<Surface> wholeScreen = m_unshown.makeSurface(SurfaceLevel::menu);
  std::function<void()> onDrain;
  std::unique_ptr<qtx11::X11DisplayServer> displayServer;
  std::unique_ptr<QtWindowSystem> system; // destroyed before what it uses
};

} // namespace orbel::qt
