// What our windows show on Qt's offscreen platform, which has no picture of a whole screen: each window's pixels,
// and all of them put together on a black screen. The platform keeps no transparency: where a window shows nothing
// it is black.
#pragma once

#include <QImage>
#include <QRect>
#include <string>

class QWindow;

namespace orbel::qt {
class BubbleWindow;
class MenuWindow;
} // namespace orbel::qt

namespace orbel::rooms {

class WindowPictures {
public:
  // The one that is visible now; null when none is.
  static qt::MenuWindow* menu();
  static qt::BubbleWindow* bubble();

  static QImage of(const QWindow& window);
  // Around the menu, with its bubble, whatever of it is beside the menu.
  static QImage together();
  // As <name>.png in the build folder's pictures.
  static bool save(const std::string& name);
};

} // namespace orbel::rooms
