#include "tests/rooms/WindowPictures.h"

#include "backends/qt/windows/BubbleWindow.h"
#include "backends/qt/windows/MenuWindow.h"
#include "backends/qt/windows/ScreenSpace.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QRegion>
#include <QScreen>

namespace orbel::rooms {

namespace {
constexpr int kMargin = 60; // around the menu, for the bubble

template <class Window>
Window* visible() {
  for (QWindow* const window : QGuiApplication::allWindows()) {
    auto* const found = dynamic_cast<Window*>(window);
    if (found && found->isVisible()) return found;
  }
  return nullptr;
}

// Black becomes transparent outside the opaque part, where it stands for nothing or for a shadow.
void clearBlackOutside(QImage& picture, const QRegion& opaque) {
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (!opaque.contains(QPoint(x, y)) && qGray(picture.pixel(x, y)) < 64)
        picture.setPixel(x, y, qRgba(0, 0, 0, 0));
    }
  }
}
} // namespace

qt::MenuWindow* WindowPictures::menu() {
  return visible<qt::MenuWindow>();
}

qt::BubbleWindow* WindowPictures::bubble() {
  return visible<qt::BubbleWindow>();
}

QImage WindowPictures::of(const QWindow& window) {
  return window.screen()->grabWindow(window.winId()).toImage();
}

QImage WindowPictures::together() {
  const qt::MenuWindow* const shown = menu();
  if (!shown) return {};
  const QRect place = shown->geometry().adjusted(-kMargin, -kMargin, kMargin, kMargin);
  QImage picture(place.size(), QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::black);
  QPainter painter(&picture);
  painter.translate(-place.topLeft());
  painter.drawImage(shown->position(), of(*shown));
  if (const qt::BubbleWindow* const title = bubble()) {
    QImage pixels = of(*title).convertToFormat(QImage::Format_ARGB32);
    const QRect body = qt::ScreenSpace::toQt(title->bodyFrame()).translated(-title->position());
    // All but its round corners.
    constexpr int kCorner = static_cast<int>(qt::BubbleLayout::kCornerRadius);
    clearBlackOutside(pixels, QRegion(body.adjusted(kCorner, 0, -kCorner, 0)) +
                                  body.adjusted(0, kCorner, 0, -kCorner));
    painter.drawImage(title->position(), pixels);
  }
  return picture;
}

bool WindowPictures::save(const std::string& name) {
  const QString folder = QStringLiteral(ORBEL_PICTURE_FOLDER);
  return QDir().mkpath(folder) && together().save(folder + "/" + QString::fromStdString(name) + ".png");
}

} // namespace orbel::rooms
