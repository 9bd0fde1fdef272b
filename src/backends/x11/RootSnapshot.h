// The pixels of a piece of the screen as they were at one moment, read through shared memory where the server
// is on this machine. Device pixels of the root window, y down. Holds its memory until it is released.
#pragma once

#include "backends/common/ScreenPicture.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace orbel::x11 {

class Connection;
class SharedPixels;
class SharedPixelsStore;

class RootSnapshot final : public common::ScreenPicture {
public:
  // Both outlive the object.
  RootSnapshot(Connection& connection, SharedPixelsStore& sharedPixels);
  ~RootSnapshot() override;
  RootSnapshot(const RootSnapshot&) = delete;
  RootSnapshot& operator=(const RootSnapshot&) = delete;

  // Fails also where the pixels of the server have an unknown form.
  bool capture(const common::DeviceRect& rect) override;
  void patchFrom(const common::ScreenPicture& older) override;
  void release() override;

  const common::DeviceRect& rect() const override { return m_rect; }
  const std::uint32_t* pixels() const override { return m_pixels; }
  std::uint32_t* pixels() override { return m_pixels; }

private:
  bool hasKnownPixels() const;
  bool readShared(const common::DeviceRect& part, std::size_t offset);
  bool readCopied(const common::DeviceRect& part, std::uint32_t* destination);

  Connection& m_connection;
  common::DeviceRect m_rect;
  SharedPixelsStore& m_sharedPixels;
  std::unique_ptr<SharedPixels> m_shared;    // while the server shares memory with us
  std::unique_ptr<std::uint32_t[]> m_copied; // else
  std::uint32_t* m_pixels = nullptr;
};

} // namespace orbel::x11
