// The process that made a window, as the X server knows it: also right for programs in a sandbox, which know
// themselves under another number. Asked for at once and read later.
#pragma once

#include <cstdint>
#include <optional>
#include <xcb/res.h>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class ClientProcess {
public:
  ClientProcess(Connection& connection, xcb_window_t window);
  ~ClientProcess();
  ClientProcess(ClientProcess&& other) noexcept;
  ClientProcess& operator=(ClientProcess&&) = delete;
  ClientProcess(const ClientProcess&) = delete;
  ClientProcess& operator=(const ClientProcess&) = delete;

  // None for a window that no longer exists, a program on another machine, or a server that cannot answer.
  std::optional<std::int32_t> identifier();

private:
  Connection* m_connection;
  xcb_res_query_client_ids_cookie_t m_cookie{};
  bool m_pending = true;
};

} // namespace orbel::x11
