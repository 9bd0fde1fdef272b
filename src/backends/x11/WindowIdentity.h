// Everything that shows which program a window belongs to and whether a taskbar lists it. Asked for at once
// and read later, so that many windows cost one round trip.
#pragma once

#include "backends/common/TopLevelWindows.h"
#include "backends/x11/ClientProcess.h"
#include "backends/x11/PropertyRequest.h"

namespace orbel::x11 {

class WindowIdentity {
public:
  WindowIdentity(Connection& connection, xcb_window_t window);
  common::TopLevelWindow read();

  enum class PropertyKind { identification, title, other };
  // What a change of that property means for the identity.
  static PropertyKind kindOfProperty(Connection& connection, xcb_atom_t property);
  // Asks for all the atoms beforehand, so that reading windows waits for none.
  static void internAtoms(Connection& connection);

private:
  std::optional<std::int32_t> processIdentifier();
  bool isNormal();
  std::string title();

  Connection& m_connection;
  xcb_window_t m_window;
  ClientProcess m_process;
  PropertyRequest m_statedProcess;
  PropertyRequest m_machine;
  PropertyRequest m_utf8Title;
  PropertyRequest m_legacyTitle;
  PropertyRequest m_class;
  PropertyRequest m_applicationId;
  PropertyRequest m_startupId;
  PropertyRequest m_types;
  PropertyRequest m_transientFor;
  PropertyRequest m_states;
};

} // namespace orbel::x11
