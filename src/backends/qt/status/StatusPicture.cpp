#include "backends/qt/status/StatusPicture.h"

#include "backends/qt/icons/PictureReader.h"
#include "backends/qt/resources/OwnResources.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QStandardPaths>

#include <utility>

namespace orbel::qt {

namespace {
constexpr auto kInstalledName = "org.orbelmenu.OrbelMenu-symbolic";
}

StatusPicture::StatusPicture(QString name, bool isTemplate)
    : m_name(std::move(name)), m_isTemplate(isTemplate) {
  OwnResources::load();
}

QImage StatusPicture::image(int side, const QColor& color) const {
  const Bitmap bitmap = PictureReader::read(QStringLiteral(":/icons/%1.svg").arg(m_name), side);
  const QImage borrowed(reinterpret_cast<const uchar*>(bitmap.pixels.data()), bitmap.width, bitmap.height,
                        QImage::Format_ARGB32_Premultiplied);
  QImage image = borrowed.copy();
  if (m_isTemplate && !image.isNull()) {
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
  }
  return image;
}

StatusPicture::ThemeIcon StatusPicture::themeIcon() const {
  if (!m_isTemplate) return {};
  const QString name = QLatin1String(kInstalledName);
  const QString place = QStringLiteral("hicolor/symbolic/apps/%1.svg").arg(name);
  if (!QStandardPaths::locate(QStandardPaths::GenericDataLocation, QStringLiteral("icons/") + place)
           .isEmpty())
    return {name, {}};
  const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  if (runtime.isEmpty()) return {};
  const QString searchPath = runtime + QStringLiteral("/orbelmenu/icons");
  const QFileInfo copy(searchPath + QLatin1Char('/') + place);
  if (!copy.exists()) {
    QDir().mkpath(copy.path());
    // Resources are read-only, and their copy with them.
    if (!QFile::copy(QStringLiteral(":/icons/%1.svg").arg(m_name), copy.filePath())) return {};
  }
  return {name, searchPath};
}

QColor StatusPicture::foreground(const std::optional<QColor>& tray) {
  return tray.value_or(QGuiApplication::palette().color(QPalette::Active, QPalette::WindowText));
}

} // namespace orbel::qt
