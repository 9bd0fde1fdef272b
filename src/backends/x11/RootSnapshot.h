// The pixels of a piece of the screen as they were at one moment, read through shared memory where the server
// is on this machine. Device pixels of the root window, y down. Holds its memory until it is released.
#pragma once

#include "backends/x11/DeviceRect.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace orbel {

class Connection;
class SharedPixels;
class SharedPixelsStore;

class RootSnapshot {
public:
  // Both outlive the object.
  RootSnapshot(Connection& connection, SharedPixelsStore& sharedPixels);
  ~RootSnapshot();
  RootSnapshot(const RootSnapshot&) = delete;
  RootSnapshot& operator=(const RootSnapshot&) = delete;

  // Reads the rectangle; what of it lies off the screen repeats the pixels at the screen's edge. False, with
  // the cause logged, when the server gives nothing or its pixels are of an unknown form; the object is empty
  // then.
  bool capture(const DeviceRect& rect);
  // Replaces the part that both cover by the other's pixels: what was there before our own window.
  void patchFrom(const RootSnapshot& older);
  void release();

  bool isEmpty() const { return m_pixels == nullptr; }
  const DeviceRect& rect() const { return m_rect; }
  // Opaque ARGB in native byte order, rows from top to bottom without padding; null while empty.
  const std::uint32_t* pixels() const { return m_pixels; }
  std::uint32_t* pixels() { return m_pixels; }

private:
  bool hasKnownPixels() const;
  bool readShared(const DeviceRect& part, std::size_t offset);
  bool readCopied(const DeviceRect& part, std::uint32_t* destination);

  Connection& m_connection;
  DeviceRect m_rect;
  SharedPixelsStore& m_sharedPixels;
  std::unique_ptr<SharedPixels> m_shared;    // while the server shares memory with us
  std::unique_ptr<std::uint32_t[]> m_copied; // else
  std::uint32_t* m_pixels = nullptr;
};

} // namespace orbel
