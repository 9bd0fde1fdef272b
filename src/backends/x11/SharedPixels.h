// Memory shared with the X server, into which it writes pixels. Making a piece costs two round trips and a
// page fault for every four kilobytes on both sides, more than the reading itself: so a piece that is given
// back is kept for the next reader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <xcb/shm.h>

namespace orbel::x11 {

class Connection;

// One piece. Freed with the object, however the program ends.
class SharedPixels {
public:
  // Null where the server shares no memory with us: it runs elsewhere, or lacks the extension.
  static std::unique_ptr<SharedPixels> create(Connection& connection, std::size_t pixelCount);
  ~SharedPixels();
  SharedPixels(const SharedPixels&) = delete;
  SharedPixels& operator=(const SharedPixels&) = delete;

  std::uint32_t* pixels() const { return m_pixels; }
  std::size_t pixelCount() const { return m_pixelCount; }
  xcb_shm_seg_t segment() const { return m_segment; }

private:
  SharedPixels(Connection& connection, xcb_shm_seg_t segment, std::uint32_t* pixels, std::size_t pixelCount);

  Connection& m_connection;
  xcb_shm_seg_t m_segment;
  std::uint32_t* m_pixels;
  std::size_t m_pixelCount;
};

// Where the pieces come from; keeps the largest that is unused. The connection outlives it, and it outlives
// the readers.
class SharedPixelsStore {
public:
  explicit SharedPixelsStore(Connection& connection) : m_connection(connection) {}

  // Of at least that many pixels, with any content; null as above.
  std::unique_ptr<SharedPixels> take(std::size_t pixelCount);
  // Null is given back to no effect.
  void giveBack(std::unique_ptr<SharedPixels> piece);

private:
  Connection& m_connection;
  std::unique_ptr<SharedPixels> m_spare;
};

} // namespace orbel::x11
