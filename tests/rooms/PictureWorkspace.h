// A workspace without files or programs whose built-in names have pictures: tiles of one plain colour each,
// so that a test finds an item again in a picture of the menu.
#pragma once

#include "foundation/Color.h"
#include "platform/Platform.h"
#include "tests/doubles/FakeWorkspace.h"

#include <map>
#include <string>

namespace orbel::rooms {

class PictureWorkspace : public FakeWorkspace {
public:
  ImagePointer imageNamed(const std::string& name) const override {
    const auto color = colors.find(name);
    if (color == colors.end()) return nullptr;
    ImagePointer& image = m_images[name];
    if (!image) {
      image = Platform::current().graphics.drawnImage({320, 320}, [fill = color->second](Canvas& canvas) {
        canvas.fillRoundedRect({0, 0, 320, 320}, 40, fill);
      });
    }
    return image;
  }

  std::map<std::string, Color> colors;

private:
  mutable std::map<std::string, ImagePointer> m_images;
};

} // namespace orbel::rooms
