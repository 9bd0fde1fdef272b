#include "backends/qt/session/SingleInstance.h"

#include "foundation/Log.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTimer>
#include <QVariantMap>

#include <utility>

namespace orbel::qt {

namespace {
constexpr auto kInterface = "org.freedesktop.Application";
// A busy program answers within this; one that hangs must not hold up its second start for ever.
constexpr int kHandOverTimeout = 5000; // milliseconds

void call(const std::function<void()>& handler) {
  if (handler) handler();
}
} // namespace

// A virtual object rather than an adaptor: it sees every call before the bus library judges it, so a call
// with the wrong arguments gets an answer that says what is wrong.
class SingleInstance::ApplicationObject final : public QDBusVirtualObject {
public:
  explicit ApplicationObject(Handlers handlers) : m_handlers(std::move(handlers)) {}

  QString introspect(const QString& path) const override {
    if (path != QLatin1String(kObjectPath)) return {};
    return QStringLiteral(
        "<interface name=\"org.freedesktop.Application\">"
        "<method name=\"Activate\"><arg type=\"a{sv}\" name=\"platform_data\" direction=\"in\"/></method>"
        "<method name=\"Open\"><arg type=\"as\" name=\"uris\" direction=\"in\"/>"
        "<arg type=\"a{sv}\" name=\"platform_data\" direction=\"in\"/></method>"
        "<method name=\"ActivateAction\"><arg type=\"s\" name=\"action_name\" direction=\"in\"/>"
        "<arg type=\"av\" name=\"parameter\" direction=\"in\"/>"
        "<arg type=\"a{sv}\" name=\"platform_data\" direction=\"in\"/></method></interface>");
  }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    if (message.interface() != QLatin1String(kInterface) && !message.interface().isEmpty()) return false;
    if (message.member() == QLatin1String("Activate")) {
      return answer(message, bus, QLatin1String("a{sv}"), m_handlers.activate);
    }
    if (message.member() == QLatin1String("Open")) {
      return answer(message, bus, QLatin1String("asa{sv}"), m_handlers.activate);
    }
    if (message.member() != QLatin1String("ActivateAction")) return false;
    const QString action = message.arguments().value(0).toString();
    if (const auto* handler = handlerOf(action))
      return answer(message, bus, QLatin1String("sava{sv}"), *handler);
    Log::warning("The session bus asked for an unknown action: " + action.left(80).toStdString());
    return bus.send(
        message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no such action.")));
  }

private:
  const std::function<void()>* handlerOf(const QString& action) const {
    if (action == QLatin1String("show")) return &m_handlers.show;
    if (action == QLatin1String("hide")) return &m_handlers.hide;
    if (action == QLatin1String("settings")) return &m_handlers.settings;
    if (action == QLatin1String("quit")) return &m_handlers.quit;
    return nullptr;
  }

  // Replies before the handler runs: the caller need not wait for what the user sees, and "quit" may not
  // come back.
  bool answer(const QDBusMessage& message, const QDBusConnection& bus, QLatin1String signature,
              const std::function<void()>& handler) {
    if (message.signature() != signature) {
      return bus.send(message.createErrorReply(
          QDBusError::InvalidArgs,
          QStringLiteral("%1 takes arguments of the type %2.").arg(message.member(), signature)));
    }
    bus.send(message.createReply());
    QTimer::singleShot(0, this, [handler] { call(handler); });
    return true;
  }

  Handlers m_handlers;
};

SingleInstance::SingleInstance(Handlers handlers, QDBusConnection bus)
    : m_bus(std::move(bus)), m_object(std::make_unique<ApplicationObject>(std::move(handlers))) {}

SingleInstance::~SingleInstance() {
  if (!m_ownsName) return;
  m_bus.unregisterObject(QString::fromLatin1(kObjectPath));
  m_bus.unregisterService(QString::fromLatin1(kServiceName));
}

SingleInstance::Role SingleInstance::start() {
  if (!m_bus.isConnected()) {
    Log::warning("There is no session bus (" + m_bus.lastError().message().toStdString() +
                 "): a second start is not noticed, and no desktop key can be bound to the menu.");
    return Role::alone;
  }
  // The object first, so that whoever waits for the name finds it.
  m_bus.registerVirtualObject(QString::fromLatin1(kObjectPath), m_object.get());
  const auto reply = m_bus.interface()->registerService(QString::fromLatin1(kServiceName));
  if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered) {
    m_ownsName = true;
    return Role::first;
  }
  m_bus.unregisterObject(QString::fromLatin1(kObjectPath));
  if (reply.isValid()) return handOver();
  Log::warning("The session bus gave no name (" + reply.error().message().toStdString() +
               "): a second start is not noticed, and no desktop key can be bound to the menu.");
  return Role::alone;
}

SingleInstance::Role SingleInstance::handOver() {
  QDBusMessage activate =
      QDBusMessage::createMethodCall(QString::fromLatin1(kServiceName), QString::fromLatin1(kObjectPath),
                                     QString::fromLatin1(kInterface), QStringLiteral("Activate"));
  QVariantMap platformData;
  const QString startupId = qEnvironmentVariable("DESKTOP_STARTUP_ID");
  if (!startupId.isEmpty()) platformData.insert(QStringLiteral("desktop-startup-id"), startupId);
  activate << platformData;
  const QDBusMessage reply = m_bus.call(activate, QDBus::Block, kHandOverTimeout);
  if (reply.type() == QDBusMessage::ErrorMessage) {
    Log::error("Orbel Menu is running already but did not answer: " + reply.errorMessage().toStdString());
  } else {
    Log::information("Orbel Menu is running already; it was asked to come forward.");
  }
  return Role::second;
}

} // namespace orbel::qt
