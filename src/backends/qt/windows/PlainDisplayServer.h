// For Qt's platforms that have no display server of their own to ask (offscreen, for one): everything is
// translucent, nothing can be blurred, seen or ordered, and the pointer is where Qt last saw it.
#pragma once

#include "backends/qt/windows/DisplayServer.h"

namespace orbel::qt {

class PlainDisplayServer final : public DisplayServer {
public:
  bool isCompositing() const override { return true; }
  Registration observeCompositing(std::function<void()>) override { return {}; }
  bool offersLiveBlur() const override { return false; }
  bool offersScreenPictures() const override { return false; }
  std::unique_ptr<common::ScreenPicture> makeScreenPicture(PictureMemory memory) override;
  common::DeviceRect wholeScreen() const override { return {}; }

  void setGeometry(WId, const common::DeviceRect&) override {}
  void disableShadow(WId) override {}
  void setInputShape(WId, const DeviceRects&) override {}
  void setOutline(WId, const std::optional<DeviceRects>&) override {}
  void setBlur(WId, const DeviceRects&) override {}
  void flush() override {}

  bool isOrderHonoured() const override { return true; }
  void raise(WId) override {}
  void placeBelow(WId, WId) override {}
  std::optional<WId> topLevel(WId window) const override { return window; }

  std::optional<QPoint> pointerLocation() const override;
  std::unique_ptr<common::PointerWatch> makePointerWatch() override;
  std::unique_ptr<common::EscapeKey> makeEscapeKey(std::function<void()> pressed) override;
  bool isDragUnderWay() const override { return true; }

  std::optional<std::int32_t> integerSetting(std::string_view) const override { return std::nullopt; }
  std::optional<std::string> textSetting(std::string_view) const override { return std::nullopt; }
};

} // namespace orbel::qt
