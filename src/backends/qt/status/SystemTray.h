// A display's status area of the older kind, which takes an icon's window into its own. NoSystemTray serves
// where there is none. Outlives its icons. Main thread only; used by the status item.
#pragma once

#include "foundation/Registration.h"
#include "scene/Bitmap.h"

#include <QColor>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orbel::qt {

// An icon in a tray. Destroying it removes it.
class TrayIcon {
public:
  struct Contents {
    std::string title;
    // A square of that many pixels.
    std::function<Bitmap(int side)> picture;
    std::function<void()> clicked; // with the primary or the secondary button
  };

  virtual ~TrayIcon() = default;
  // The picture has changed.
  virtual void redraw() = 0;
};

class SystemTray {
public:
  // Distinguishes one tray from the next.
  using Identity = std::uint64_t;
  static constexpr Identity kNone = 0;

  virtual ~SystemTray() = default;
  // kNone while there is none.
  virtual Identity current() const = 0;
  // In which colour the tray wants icons of one colour, which distinguishes dark trays from light ones.
  // Nothing when there is no tray or it does not say. Asked now.
  virtual std::optional<QColor> foreground() = 0;
  // Calls the block after a tray has appeared, disappeared or changed its colour.
  virtual Registration observeChanges(std::function<void()> block) = 0;
  // In the current tray; only while there is one.
  virtual std::unique_ptr<TrayIcon> addIcon(TrayIcon::Contents contents) = 0;
};

} // namespace orbel::qt
