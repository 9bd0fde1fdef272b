// The values that a StatusNotifierItem hands out, in the shape that the bus library sends. Used by
// StatusNotifierItem alone.
#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>
#include <QString>

namespace orbel::qt {

// Signature (iiay): ARGB, 8 bits each, not premultiplied, in network byte order.
struct NotifierPixmap {
  int width = 0;
  int height = 0;
  QByteArray bytes;

  static NotifierPixmap fromImage(const QImage& image);
};
using NotifierPixmaps = QList<NotifierPixmap>;

// Signature (sa(iiay)ss).
struct NotifierToolTip {
  QString iconName;
  NotifierPixmaps pixmaps;
  QString title;
  QString text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& toolTip);

// Before any of them is sent.
void registerNotifierTypes();

} // namespace orbel::qt

Q_DECLARE_METATYPE(orbel::qt::NotifierPixmap)
Q_DECLARE_METATYPE(orbel::qt::NotifierToolTip)
