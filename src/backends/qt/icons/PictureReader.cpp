#include "backends/qt/icons/PictureReader.h"

#include "foundation/Log.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cstring>

namespace orbel::qt {

namespace {
constexpr qint64 kLargestFile = 64 << 20;
constexpr qint64 kLargestDrawing = 8 << 20;
// Inflates to at most a thousand times as much.
constexpr qint64 kLargestCompressedDrawing = 64 << 10;
constexpr int kLargestSide = 16384;     // pixels
constexpr int kLargestAllocation = 128; // MiB, of one decoded picture
constexpr int kMostPicturesInFile = 64;

QImage refused(const QString& path, const QString& why) {
  Log::warning("The picture " + path.toStdString() + " cannot be shown: " + why.toStdString());
  return {};
}

enum class Content { bitmap, drawing, compressedDrawing };

// By what is in the file: icons often have the wrong extension or none.
Content contentOf(QFile& file) {
  const QByteArray start = file.peek(512);
  if (start.startsWith("\x1f\x8b")) return Content::compressedDrawing;
  const QByteArray text = start.startsWith("\xef\xbb\xbf") ? start.mid(3).trimmed() : start.trimmed();
  const bool isMarkup = text.startsWith("<svg") || text.startsWith("<?xml") || text.startsWith("<!--") ||
                        text.startsWith("<!DOCTYPE");
  return isMarkup ? Content::drawing : Content::bitmap;
}

QImage drawn(const QString& path, QFile& file, Content content, int side) {
  const qint64 limit = content == Content::drawing ? kLargestDrawing : kLargestCompressedDrawing;
  if (file.size() > limit) return refused(path, QStringLiteral("the drawing is too large."));
  QSvgRenderer renderer;
  if (!renderer.load(file.readAll()) || renderer.defaultSize().isEmpty()) {
    return refused(path, QStringLiteral("the drawing is damaged."));
  }
  renderer.setAspectRatioMode(Qt::KeepAspectRatio);
  QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  renderer.render(&painter, QRectF(0, 0, side, side));
  return image;
}

// Icon files hold several sizes: the smallest that is large enough, else the largest.
void goToBestPicture(QImageReader& reader, int side) {
  const int count = std::min(reader.imageCount(), kMostPicturesInFile);
  int best = 0;
  int bestWidth = 0;
  for (int index = 0; index < count; ++index) {
    if (!reader.jumpToImage(index)) return;
    const int width = reader.size().width();
    const bool isBetter = bestWidth < side ? width > bestWidth : width >= side && width < bestWidth;
    if (isBetter) {
      best = index;
      bestWidth = width;
    }
  }
  if (count > 1) reader.jumpToImage(best);
}

QImage decoded(const QString& path, QFile& file, int side) {
  QImageReader::setAllocationLimit(kLargestAllocation);
  QImageReader reader(&file);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  goToBestPicture(reader, side);
  const QSize size = reader.size();
  if (size.width() > kLargestSide || size.height() > kLargestSide) {
    return refused(path, QStringLiteral("it has %1 by %2 pixels.").arg(size.width()).arg(size.height()));
  }
  // Lets the decoder shrink while it reads where the format allows it; nothing is magnified.
  const QSize fitted = size.scaled(side, side, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
  if (size.isValid() && (size.width() > side || size.height() > side)) reader.setScaledSize(fitted);
  QImage image = reader.read();
  if (image.isNull()) return refused(path, reader.errorString());
  if (image.width() > side || image.height() > side) {
    image = image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  }
  return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

Bitmap squareOf(const QImage& image) {
  const int side = std::max(image.width(), image.height());
  if (side == 0) return {};
  Bitmap bitmap(side, side);
  const int left = (side - image.width()) / 2;
  const int top = (side - image.height()) / 2;
  for (int row = 0; row < image.height(); ++row) {
    auto* target = &bitmap.pixels[static_cast<std::size_t>(row + top) * static_cast<std::size_t>(side) +
                                  static_cast<std::size_t>(left)];
    std::memcpy(target, image.constScanLine(row), static_cast<std::size_t>(image.width()) * sizeof *target);
  }
  return bitmap;
}
} // namespace

Bitmap PictureReader::read(const QString& path, int pixelSize) {
  const int side = std::clamp(pixelSize, 1, kLargestSide);
  QFile file(path);
  // Opening a pipe or a device could wait for ever.
  if (QFileInfo info(path); !info.isFile()) {
    return squareOf(refused(path, info.exists() ? QStringLiteral("it is not a file.")
                                                : QStringLiteral("there is no such file.")));
  }
  if (file.size() > kLargestFile) return squareOf(refused(path, QStringLiteral("the file is too large.")));
  if (!file.open(QIODevice::ReadOnly)) return squareOf(refused(path, file.errorString()));
  const Content content = contentOf(file);
  return squareOf(content == Content::bitmap ? decoded(path, file, side) : drawn(path, file, content, side));
}

} // namespace orbel::qt
