#include "backends/x11/SharedPixels.h"

#include "backends/x11/Connection.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <utility>

namespace orbel::x11 {

std::unique_ptr<SharedPixels> SharedPixels::create(Connection& connection, std::size_t pixelCount) {
  xcb_connection_t* xcb = connection.xcb();
  const auto* extension = xcb_get_extension_data(xcb, &xcb_shm_id);
  if (!extension || !extension->present) return nullptr;
  const int identifier = shmget(IPC_PRIVATE, pixelCount * sizeof(std::uint32_t), IPC_CREAT | 0600);
  if (identifier < 0) return nullptr;
  void* memory = shmat(identifier, nullptr, 0);
  const bool mapped = memory != reinterpret_cast<void*>(-1);
  xcb_shm_seg_t segment = 0;
  bool attached = false;
  if (mapped) {
    segment = xcb_generate_id(xcb);
    const auto error = ownReply(xcb_request_check(
        xcb, xcb_shm_attach_checked(xcb, segment, static_cast<std::uint32_t>(identifier), 0)));
    attached = !error;
  }
  // Freed with the last attachment to it, so that nothing is left behind however the program ends.
  shmctl(identifier, IPC_RMID, nullptr);
  if (!attached) {
    if (mapped) shmdt(memory);
    return nullptr;
  }
  return std::unique_ptr<SharedPixels>(
      new SharedPixels(connection, segment, static_cast<std::uint32_t*>(memory), pixelCount));
}

SharedPixels::SharedPixels(Connection& connection, xcb_shm_seg_t segment, std::uint32_t* pixels,
                           std::size_t pixelCount)
    : m_connection(connection), m_segment(segment), m_pixels(pixels), m_pixelCount(pixelCount) {}

SharedPixels::~SharedPixels() {
  xcb_shm_detach(m_connection.xcb(), m_segment);
  m_connection.flush();
  shmdt(m_pixels);
}

std::unique_ptr<SharedPixels> SharedPixelsStore::take(std::size_t pixelCount) {
  if (m_spare && m_spare->pixelCount() >= pixelCount) return std::exchange(m_spare, nullptr);
  return SharedPixels::create(m_connection, pixelCount);
}

void SharedPixelsStore::giveBack(std::unique_ptr<SharedPixels> piece) {
  if (piece && (!m_spare || m_spare->pixelCount() < piece->pixelCount())) m_spare = std::move(piece);
}

} // namespace orbel::x11
