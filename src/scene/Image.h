// A picture with a nominal size in points whose pixels are made when they are first drawn.
// A renderer draws the picture at a wanted pixel size; the result is kept with its mip chain, so an icon that
// grows and shrinks costs no rescaling from its full size. Shared by the views and the image cache; main
// thread only.
#pragma once

#include "foundation/Geometry.h"
#include "scene/Bitmap.h"

#include <functional>
#include <memory>
#include <vector>

namespace orbel {

class Image {
public:
  // Draws the picture into a bitmap of about that many pixels. An empty bitmap means that there is nothing to
  // draw, or nothing any more: what was drawn before stays.
  using Renderer = std::function<Bitmap(int pixelWidth, int pixelHeight)>;

  Image(Size pointSize, Renderer renderer);
  // A picture whose pixels are there already; it is never drawn larger than they are without blurring.
  static std::shared_ptr<const Image> withBitmap(Size pointSize, Bitmap bitmap);

  // Points; icons of menu items are 320 by 320.
  Size size() const { return m_size; }

  // The smallest kept level with at least that many pixels across; draws and keeps a new chain when all
  // are smaller.
  const Bitmap& representation(int pixelWidth, int pixelHeight) const;

  // Makes sure that drawing up to that size renders nothing later. Called before an animation that will grow
  // the image.
  void prepare(int pixelWidth, int pixelHeight) const { representation(pixelWidth, pixelHeight); }

private:
  Size m_size;
  Renderer m_renderer;
  // Largest first. Made by drawing, which leaves the picture itself as it was.
  mutable std::vector<Bitmap> m_levels;
  mutable int m_renderedWidth = 0;
  mutable int m_renderedHeight = 0;
};

using ImagePointer = std::shared_ptr<const Image>;

} // namespace orbel
