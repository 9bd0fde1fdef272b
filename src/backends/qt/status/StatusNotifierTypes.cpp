#include "backends/qt/status/StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace orbel::qt {

NotifierPixmap NotifierPixmap::fromImage(const QImage& image) {
  const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
  NotifierPixmap pixmap{argb.width(), argb.height(), {}};
  pixmap.bytes.reserve(qsizetype{4} * argb.width() * argb.height());
  for (int y = 0; y < argb.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(argb.constScanLine(y));
    for (int x = 0; x < argb.width(); ++x) {
      const quint32 bigEndian = qToBigEndian(line[x]);
      pixmap.bytes.append(reinterpret_cast<const char*>(&bigEndian), sizeof bigEndian);
    }
  }
  return pixmap;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPixmap& pixmap) {
  argument.beginStructure();
  argument << pixmap.width << pixmap.height << pixmap.bytes;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPixmap& pixmap) {
  argument.beginStructure();
  argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& toolTip) {
  argument.beginStructure();
  argument << toolTip.iconName << toolTip.pixmaps << toolTip.title << toolTip.text;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& toolTip) {
  argument.beginStructure();
  argument >> toolTip.iconName >> toolTip.pixmaps >> toolTip.title >> toolTip.text;
  argument.endStructure();
  return argument;
}

void registerNotifierTypes() {
  qDBusRegisterMetaType<NotifierPixmap>();
  qDBusRegisterMetaType<NotifierPixmaps>();
  qDBusRegisterMetaType<NotifierToolTip>();
}

} // namespace orbel::qt
