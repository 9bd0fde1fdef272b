#include "backends/qt/video/QtVideoPlayerFactory.h"

#include "backends/qt/resources/OwnResources.h"
#include "backends/qt/video/VideoProcess.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>

#include <cstring>
#include <utility>

namespace orbel::qt {

namespace {
constexpr const char* kProgram = "orbelmenu-video";

Bitmap bitmapOf(QImage image) {
  image.convertTo(QImage::Format_ARGB32_Premultiplied);
  Bitmap bitmap(image.width(), image.height());
  for (int y = 0; y < bitmap.height; ++y) {
    std::memcpy(bitmap.pixels.data() + static_cast<std::ptrdiff_t>(y) * bitmap.width, image.constScanLine(y),
                static_cast<std::size_t>(bitmap.width) * 4);
  }
  return bitmap;
}
} // namespace

QString QtVideoPlayerFactory::findProgram() {
  const QString folder = QCoreApplication::applicationDirPath();
  const QString beside = folder + QLatin1Char('/') + QLatin1String(kProgram);
  if (QFileInfo(beside).isExecutable()) return beside;
  return folder + QStringLiteral("/" ORBEL_VIDEO_FROM_PROGRAMS "/") + QLatin1String(kProgram);
}

ImagePointer QtVideoPlayerFactory::still(const std::string& resource, Size size) {
  OwnResources::load();
  const QString path = QStringLiteral(":/video/%1.svg").arg(QString::fromStdString(resource));
  if (!QFileInfo::exists(path)) return nullptr;
  return std::make_shared<Image>(size, [path](int width, int height) {
    QImageReader reader(path);
    reader.setScaledSize(QSize(width, height));
    return bitmapOf(reader.read());
  });
}

Result<std::unique_ptr<VideoPlayer>> QtVideoPlayerFactory::load(const std::string& resource,
                                                                const std::string& extension,
                                                                VideoPlayerHandlers handlers) {
  const std::string video = resource + '.' + extension;
  if (!QFileInfo(m_program).isExecutable()) {
    return Failure{"the video " + video + " is shown as a still picture: there is no program " +
                   m_program.toStdString()};
  }
  return std::make_unique<VideoProcess>(m_program, video, std::move(handlers));
}

} // namespace orbel::qt
