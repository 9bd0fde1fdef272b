#include "backends/qt-x11/X11SystemTray.h"

#include "backends/x11/TrayIcon.h"

#include <QRgba64>
#include <utility>

namespace orbel::qtx11 {

namespace {
constexpr quint16 kOpaque = 0xFFFF;

class Icon final : public qt::TrayIcon {
public:
  Icon(x11::Connection& connection, xcb_window_t tray, Contents contents)
      : m_icon(connection, tray,
               {std::move(contents.title), std::move(contents.picture), std::move(contents.clicked)}) {}

  void redraw() override { m_icon.redraw(); }

private:
  x11::TrayIcon m_icon;
};
} // namespace

std::optional<QColor> X11SystemTray::foreground() {
  const auto color = m_watch.foreground();
  if (!color) return std::nullopt;
  return QColor::fromRgba64(QRgba64::fromRgba64(color->red, color->green, color->blue, kOpaque));
}

std::unique_ptr<qt::TrayIcon> X11SystemTray::addIcon(qt::TrayIcon::Contents contents) {
  return std::make_unique<Icon>(m_watch.connection(), m_watch.tray(), std::move(contents));
}

} // namespace orbel::qtx11
