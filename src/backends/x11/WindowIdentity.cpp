#include "backends/x11/WindowIdentity.h"

#include "backends/x11/Connection.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unistd.h>

namespace orbel::x11 {

namespace {

constexpr std::array kIdentifyingProperties = {
    "_NET_WM_PID",     "WM_CLIENT_MACHINE",   "WM_CLASS",         "_GTK_APPLICATION_ID",
    "_NET_STARTUP_ID", "_NET_WM_WINDOW_TYPE", "WM_TRANSIENT_FOR", "_NET_WM_STATE",
};
constexpr std::array kTitleProperties = {"_NET_WM_NAME", "WM_NAME"};

std::string hostName() {
  std::array<char, 256> name{};
  if (gethostname(name.data(), name.size() - 1) != 0) return {};
  return name.data();
}

// A machine may be named with or without its domain.
bool isThisMachine(std::string_view machine) {
  static const std::string own = hostName();
  const auto shortName = [](std::string_view name) { return name.substr(0, name.find('.')); };
  return machine == "localhost" || (!machine.empty() && shortName(machine) == shortName(own));
}

} // namespace

WindowIdentity::WindowIdentity(Connection& connection, xcb_window_t window)
    : m_connection(connection), m_window(window), m_process(connection, window),
      m_statedProcess(connection, window, "_NET_WM_PID"), m_machine(connection, window, "WM_CLIENT_MACHINE"),
      m_utf8Title(connection, window, "_NET_WM_NAME"), m_legacyTitle(connection, window, "WM_NAME"),
      m_class(connection, window, "WM_CLASS"), m_applicationId(connection, window, "_GTK_APPLICATION_ID"),
      m_startupId(connection, window, "_NET_STARTUP_ID"), m_types(connection, window, "_NET_WM_WINDOW_TYPE"),
      m_transientFor(connection, window, "WM_TRANSIENT_FOR"), m_states(connection, window, "_NET_WM_STATE") {}

common::TopLevelWindow WindowIdentity::read() {
  common::TopLevelWindow window;
  window.id = m_window;
  window.processIdentifier = processIdentifier();
  window.title = title();
  const auto classParts = m_class.texts();
  if (!classParts.empty()) window.instanceName = classParts[0];
  if (classParts.size() > 1) window.className = classParts[1];
  window.applicationId = m_applicationId.text();
  window.startupId = m_startupId.text();
  window.isNormal = isNormal();
  return window;
}

// The server's answer comes from the kernel. What the window says itself is the number inside a sandbox, or
// one of another machine; it stands in where the server cannot answer.
std::optional<std::int32_t> WindowIdentity::processIdentifier() {
  if (const auto process = m_process.identifier()) return process;
  const auto stated = m_statedProcess.number();
  if (!stated || *stated == 0 || !isThisMachine(m_machine.text())) return std::nullopt;
  return static_cast<std::int32_t>(*stated);
}

bool WindowIdentity::isNormal() {
  const auto holds = [](std::span<const std::uint32_t> atoms, xcb_atom_t atom) {
    return std::ranges::find(atoms, atom) != atoms.end();
  };
  const auto types = m_types.numbers();
  const bool hasNormalType = types.empty() || holds(types, m_connection.atom("_NET_WM_WINDOW_TYPE_NORMAL"));
  const bool isTransient = m_transientFor.number().value_or(XCB_NONE) != XCB_NONE;
  return hasNormalType && !isTransient &&
         !holds(m_states.numbers(), m_connection.atom("_NET_WM_STATE_SKIP_TASKBAR"));
}

std::string WindowIdentity::title() {
  const std::string utf8 = m_utf8Title.text();
  return utf8.empty() ? m_legacyTitle.text() : utf8;
}

WindowIdentity::PropertyKind WindowIdentity::kindOfProperty(Connection& connection, xcb_atom_t property) {
  const auto isProperty = [&](const char* name) { return connection.atom(name) == property; };
  if (std::ranges::any_of(kIdentifyingProperties, isProperty)) return PropertyKind::identification;
  if (std::ranges::any_of(kTitleProperties, isProperty)) return PropertyKind::title;
  return PropertyKind::other;
}

void WindowIdentity::internAtoms(Connection& connection) {
  static constexpr std::array kValues = {"_NET_WM_WINDOW_TYPE_NORMAL", "_NET_WM_STATE_SKIP_TASKBAR"};
  connection.internAtoms(kIdentifyingProperties);
  connection.internAtoms(kTitleProperties);
  connection.internAtoms(kValues);
}

} // namespace orbel::x11
