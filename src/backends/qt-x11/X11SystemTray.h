// The X server's system tray (XEmbed) as the status item uses it.
#pragma once

#include "backends/qt/status/SystemTray.h"
#include "backends/x11/SystemTrayWatch.h"

namespace orbel::qtx11 {

class X11SystemTray final : public qt::SystemTray {
public:
  // The connection outlives the tray.
  explicit X11SystemTray(x11::Connection& connection) : m_watch(connection) {}

  Identity current() const override { return m_watch.tray(); }
  std::optional<QColor> foreground() override;
  Registration observeChanges(std::function<void()> block) override {
    return m_watch.observeChanges(std::move(block));
  }
  std::unique_ptr<qt::TrayIcon> addIcon(qt::TrayIcon::Contents contents) override;

private:
  x11::SystemTrayWatch m_watch;
};

} // namespace orbel::qtx11
