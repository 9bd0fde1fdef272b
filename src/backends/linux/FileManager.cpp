#include "backends/linux/FileManager.h"

#include "backends/common/SessionBus.h"
#include "backends/linux/DefaultApplications.h"
#include "backends/linux/GlibPointers.h"
#include "foundation/Lifetime.h"
#include "foundation/Log.h"

#include <utility>

namespace orbel::linux {

namespace {

constexpr int kTimeout = 10'000; // milliseconds; a file manager that the bus has to start takes its time

} // namespace

struct FileManager::State {
  struct Request {
    State& state;
    Lifetime::Watch life; // of the state
    std::string path;     // "" to have the connection alone
    std::string startupId;
  };

  Fallback fallback;
  GObjectPointer<GDBusConnection> connection;
  GObjectPointer<GCancellable> cancellable{g_cancellable_new()};
  Lifetime lifetime;

  // The connection alone without a path.
  void connect(const std::string& path, const std::string& startupId) {
    g_bus_get(G_BUS_TYPE_SESSION, cancellable.get(), connected,
              new Request{*this, lifetime.watch(), path, startupId});
  }

  void fallBack(const std::string& path) const {
    const Fallback block = fallback; // it may end the file manager, and with it this object
    block(path);
  }

  // The connection is kept: GIO shares it when it starts programs, and as the first holder we decide that the
  // process outlives the bus.
  GDBusConnection* take(GAsyncResult* result) {
    GObjectPointer<GDBusConnection> taken(g_bus_get_finish(result, nullptr));
    if (taken) {
      g_dbus_connection_set_exit_on_close(taken.get(), FALSE);
      connection = std::move(taken);
    }
    return connection.get();
  }

  static void connected(GObject*, GAsyncResult* result, gpointer data) {
    std::unique_ptr<Request> request(static_cast<Request*>(data));
    if (request->life.hasEnded()) {
      const GObjectPointer<GDBusConnection> unused(g_bus_get_finish(result, nullptr));
      return;
    }
    State& state = request->state;
    GDBusConnection* connection = state.take(result);
    if (request->path.empty()) return;
    if (!connection) {
      state.fallBack(request->path);
      return;
    }
    const std::string uri = DefaultApplications::uriForPath(request->path);
    const char* uris[] = {uri.c_str(), nullptr};
    GVariant* parameters = g_variant_new("(^ass)", uris, request->startupId.c_str());
    g_dbus_connection_call(connection, "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                           "org.freedesktop.FileManager1", "ShowFolders", parameters, nullptr,
                           G_DBUS_CALL_FLAGS_NONE, kTimeout, state.cancellable.get(), answered,
                           request.release());
  }

  static void answered(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Request> request(static_cast<Request*>(data));
    GError* error = nullptr;
    GVariant* answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error);
    if (answer) g_variant_unref(answer);
    if (!error) return;
    const GlibError owned(error);
    if (request->life.hasEnded()) return;
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT)) {
      // It may still be starting: a second file manager beside it would be worse than none.
      Log::warning("the file manager did not answer when asked for " + request->path);
      return;
    }
    request->state.fallBack(request->path);
  }
};

FileManager::FileManager(Fallback fallback) : m_state(std::make_unique<State>()) {
  m_state->fallback = std::move(fallback);
  if (common::SessionBus::isThere()) m_state->connect("", "");
}

FileManager::~FileManager() {
  g_cancellable_cancel(m_state->cancellable.get());
}

void FileManager::showFolder(const std::string& path, const std::string& startupId) {
  if (!common::SessionBus::isThere()) {
    m_state->fallBack(path);
    return;
  }
  m_state->connect(path, startupId);
}

} // namespace orbel::linux
