// The floor: a resident Qt program whose only window is mapped, round and painted, when a key combination is
// pressed (Control+Alt+B), and unmapped when it is pressed again. Nothing is asked, loaded or looked up.
#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QPainter>
#include <QWidget>
#include <cstdint>
#include <cstdio>
#include <xcb/xcb.h>

namespace {

constexpr int kSide = 400;
constexpr std::uint8_t kKeyB = 56; // evdev's 48 and the server's 8
constexpr std::uint16_t kControlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;

class Disc : public QWidget {
public:
  Disc()
      : QWidget(nullptr, Qt::BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                             Qt::WindowDoesNotAcceptFocus) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    resize(kSide, kSide);
    winId();
  }

protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(20, 120, 40));
    painter.drawEllipse(rect());
  }
};

class KeyFilter : public QAbstractNativeEventFilter {
public:
  explicit KeyFilter(Disc& disc) : m_disc(disc) {}
  bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7f) != XCB_KEY_PRESS) return false;
    const auto* press = reinterpret_cast<const xcb_key_press_event_t*>(event);
    if (press->detail != kKeyB) return false;
    m_disc.move(press->root_x - kSide / 2, press->root_y - kSide / 2);
    m_disc.setVisible(!m_disc.isVisible());
    return true;
  }

private:
  Disc& m_disc;
};

} // namespace

int main(int argumentCount, char** arguments) {
  QApplication application(argumentCount, arguments);
  QApplication::setQuitOnLastWindowClosed(false);
  Disc disc;
  KeyFilter filter(disc);
  application.installNativeEventFilter(&filter);
  auto* connection = application.nativeInterface<QNativeInterface::QX11Application>()->connection();
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  xcb_grab_key(connection, 1, screen->root, kControlAlt, kKeyB, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  xcb_flush(connection);
  std::puts("ready");
  std::fflush(stdout);
  return QApplication::exec();
}
