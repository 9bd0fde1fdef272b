#include "backends/x11/ClientProcess.h"

#include "backends/x11/Connection.h"

#include <utility>

namespace orbel::x11 {

ClientProcess::ClientProcess(Connection& connection, xcb_window_t window) : m_connection(&connection) {
  const auto* extension = xcb_get_extension_data(connection.xcb(), &xcb_res_id);
  if (!extension || !extension->present) {
    m_pending = false;
    return;
  }
  const xcb_res_client_id_spec_t wanted = {window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  m_cookie = xcb_res_query_client_ids(connection.xcb(), 1, &wanted);
}

ClientProcess::~ClientProcess() {
  if (m_pending) xcb_discard_reply(m_connection->xcb(), m_cookie.sequence);
}

ClientProcess::ClientProcess(ClientProcess&& other) noexcept
    : m_connection(other.m_connection), m_cookie(other.m_cookie),
      m_pending(std::exchange(other.m_pending, false)) {}

std::optional<std::int32_t> ClientProcess::identifier() {
  if (!std::exchange(m_pending, false)) return std::nullopt;
  const auto reply = ownReply(xcb_res_query_client_ids_reply(m_connection->xcb(), m_cookie, nullptr));
  if (!reply) return std::nullopt;
  for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
       xcb_res_client_id_value_next(&ids)) {
    const bool isProcess = (ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
    if (!isProcess || xcb_res_client_id_value_value_length(ids.data) < 1) continue;
    const auto process = static_cast<std::int32_t>(*xcb_res_client_id_value_value(ids.data));
    if (process > 0) return process;
  }
  return std::nullopt;
}

} // namespace orbel::x11
