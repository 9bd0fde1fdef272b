// Makes the program the only one of its kind on the session bus and takes the desktop's requests there: the
// org.freedesktop.Application interface under the name org.orbelmenu.OrbelMenu. Made and owned by main; the
// handlers run on the main thread.
#pragma once

#include <QDBusConnection>
#include <QString>

#include <functional>
#include <memory>

namespace orbel::qt {

class SingleInstance {
public:
  static constexpr const char* kServiceName = "org.orbelmenu.OrbelMenu";
  static constexpr const char* kObjectPath = "/org/orbelmenu/OrbelMenu";

  enum class Role {
    first,  // this process serves the requests from now on
    second, // another one runs and was asked to come forward: this process should end with status 0
    alone   // there is no session bus (logged): the program works, but nothing reaches it there
  };

  // What the desktop may ask for; each may be empty.
  struct Handlers {
    std::function<void()> activate; // also for a request to open something
    std::function<void()> show;
    std::function<void()> hide;
    std::function<void()> settings;
    std::function<void()> quit;
  };

  explicit SingleInstance(Handlers handlers, QDBusConnection bus = QDBusConnection::sessionBus());
  // Gives the name up.
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Takes the name or hands over to the process that has it.
  Role start();

private:
  class ApplicationObject;

  Role handOver();

  QDBusConnection m_bus;
  std::unique_ptr<ApplicationObject> m_object;
  bool m_ownsName = false;
};

} // namespace orbel::qt
