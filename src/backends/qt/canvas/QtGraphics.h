// Draws into bitmaps outside any window.
#pragma once

#include "backends/qt/canvas/QtCanvas.h"
#include "platform/Graphics.h"

namespace orbel::qt {

class QtGraphics : public Graphics {
public:
  Bitmap render(int pixelWidth, int pixelHeight, Size pointSize,
                const std::function<void(Canvas&)>& drawing) override;
};

} // namespace orbel::qt
