#include "backends/qt/status/StatusNotifierItem.h"

#include "backends/qt/status/StatusNotifierTypes.h"
#include "foundation/Log.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QTimer>
#include <QVariantMap>

#include <array>
#include <utility>

namespace orbel::qt {

namespace {
constexpr auto kInterface = "org.kde.StatusNotifierItem";
constexpr auto kPropertiesInterface = "org.freedesktop.DBus.Properties";
constexpr auto kIdentity = "orbelmenu";
// Where panels look for the object of an item that has no menu.
constexpr auto kNoMenu = "/NO_DBUSMENU";
constexpr std::array kSides = {16, 22, 24, 32, 48, 64}; // pixels

constexpr auto kIntrospection = R"xml(<interface name="org.kde.StatusNotifierItem">
<property name="Category" type="s" access="read"/><property name="Id" type="s" access="read"/>
<property name="Title" type="s" access="read"/><property name="Status" type="s" access="read"/>
<property name="WindowId" type="i" access="read"/><property name="IconThemePath" type="s" access="read"/>
<property name="Menu" type="o" access="read"/><property name="ItemIsMenu" type="b" access="read"/>
<property name="IconName" type="s" access="read"/><property name="IconPixmap" type="a(iiay)" access="read"/>
<property name="OverlayIconName" type="s" access="read"/>
<property name="OverlayIconPixmap" type="a(iiay)" access="read"/>
<property name="AttentionIconName" type="s" access="read"/>
<property name="AttentionIconPixmap" type="a(iiay)" access="read"/>
<property name="AttentionMovieName" type="s" access="read"/>
<property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
<method name="Activate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="SecondaryActivate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="ContextMenu"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="Scroll"><arg name="delta" type="i" direction="in"/><arg name="orientation" type="s" direction="in"/></method>
<signal name="NewIcon"/><signal name="NewTitle"/><signal name="NewToolTip"/>
<signal name="NewAttentionIcon"/><signal name="NewOverlayIcon"/>
<signal name="NewStatus"><arg name="status" type="s"/></signal>
</interface>)xml";
} // namespace

// A virtual object rather than an adaptor: the values are few, and no type of ours needs the
// meta-object compiler.
class StatusNotifierItem::BusObject final : public QDBusVirtualObject {
public:
  BusObject(StatusPicture picture, QString title, std::function<void()> clicked)
      : m_picture(std::move(picture)), m_title(std::move(title)), m_clicked(std::move(clicked)),
        m_foreground(StatusPicture::foreground(std::nullopt)) {}

  void setForeground(const QColor& color) { m_foreground = color; }
  const QColor& foreground() const { return m_foreground; }

  QString introspect(const QString& path) const override {
    return path == QLatin1String(kObjectPath) ? QString::fromLatin1(kIntrospection) : QString();
  }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    if (message.interface() == QLatin1String(kPropertiesInterface)) return handleProperties(message, bus);
    if (message.interface() != QLatin1String(kInterface) && !message.interface().isEmpty()) return false;
    const QString member = message.member();
    // There is no menu, so a click with the other button opens the settings as well.
    if (member == QLatin1String("Activate") || member == QLatin1String("ContextMenu")) {
      bus.send(message.createReply());
      QTimer::singleShot(0, this, [clicked = m_clicked] {
        if (clicked) clicked();
      });
      return true;
    }
    if (member == QLatin1String("SecondaryActivate") || member == QLatin1String("Scroll"))
      return bus.send(message.createReply());
    return false;
  }

private:
  bool handleProperties(const QDBusMessage& message, const QDBusConnection& bus) const {
    const auto arguments = message.arguments();
    if (arguments.value(0).toString() != QLatin1String(kInterface)) return false;
    const QVariantMap all = properties();
    if (message.member() == QLatin1String("GetAll")) return bus.send(message.createReply(QVariant(all)));
    if (message.member() != QLatin1String("Get")) return false;
    const auto value = all.constFind(arguments.value(1).toString());
    if (value == all.constEnd()) {
      return bus.send(message.createErrorReply(QDBusError::UnknownProperty,
                                               QStringLiteral("There is no such property.")));
    }
    return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(*value))));
  }

  QVariantMap properties() const {
    NotifierPixmaps pixmaps;
    for (const int side : kSides)
      pixmaps << NotifierPixmap::fromImage(m_picture.image(side, m_foreground));
    const auto theme = m_picture.themeIcon();
    const QVariant none = QVariant::fromValue(NotifierPixmaps());
    return {{QStringLiteral("Category"), QStringLiteral("ApplicationStatus")},
            {QStringLiteral("Id"), QLatin1String(kIdentity)},
            {QStringLiteral("Title"), m_title},
            {QStringLiteral("Status"), QStringLiteral("Active")},
            {QStringLiteral("WindowId"), 0},
            {QStringLiteral("IconThemePath"), theme.searchPath},
            {QStringLiteral("Menu"), QVariant::fromValue(QDBusObjectPath(QLatin1String(kNoMenu)))},
            {QStringLiteral("ItemIsMenu"), false},
            {QStringLiteral("IconName"), theme.name},
            {QStringLiteral("IconPixmap"), QVariant::fromValue(pixmaps)},
            {QStringLiteral("OverlayIconName"), QString()},
            {QStringLiteral("OverlayIconPixmap"), none},
            {QStringLiteral("AttentionIconName"), QString()},
            {QStringLiteral("AttentionIconPixmap"), none},
            {QStringLiteral("AttentionMovieName"), QString()},
            {QStringLiteral("ToolTip"), QVariant::fromValue(NotifierToolTip{{}, {}, m_title, {}})}};
  }

  StatusPicture m_picture;
  QString m_title;
  std::function<void()> m_clicked;
  QColor m_foreground;
};

StatusNotifierItem::StatusNotifierItem(QDBusConnection bus, StatusPicture picture, const QString& title,
                                       std::function<void()> clicked)
    : m_bus(std::move(bus)),
      m_serviceName(
          QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid())),
      m_object(std::make_unique<BusObject>(std::move(picture), title, std::move(clicked))) {
  registerNotifierTypes();
  m_bus.registerVirtualObject(QLatin1String(kObjectPath), m_object.get());
  if (m_bus.isConnected() && !m_bus.registerService(m_serviceName)) {
    Log::warning("The session bus gave no name for the status icon: " +
                 m_bus.lastError().message().toStdString());
    m_serviceName = m_bus.baseService();
  }
}

StatusNotifierItem::~StatusNotifierItem() {
  m_bus.unregisterObject(QLatin1String(kObjectPath));
  if (m_bus.isConnected() && m_serviceName != m_bus.baseService()) m_bus.unregisterService(m_serviceName);
}

void StatusNotifierItem::setForeground(const QColor& color) {
  if (m_object->foreground() == color) return;
  m_object->setForeground(color);
  m_bus.send(QDBusMessage::createSignal(QLatin1String(kObjectPath), QLatin1String(kInterface),
                                        QStringLiteral("NewIcon")));
}

} // namespace orbel::qt
