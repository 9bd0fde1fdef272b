#include "model/GrayscaleFilter.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

namespace orbel {

namespace {

constexpr float kContrast = 1.1f;
constexpr float kMiddle = 0.5f;
constexpr float kRedWeight = 0.2126f;
constexpr float kGreenWeight = 0.7152f;
constexpr float kBlueWeight = 0.0722f;

std::uint32_t filteredPixel(std::uint32_t pixel) {
  const std::uint32_t alpha = pixel >> 24;
  if (alpha == 0) return 0;
  const auto premultiplied = [pixel](int shift) { return static_cast<float>((pixel >> shift) & 0xFF); };
  const float weighted =
      kRedWeight * premultiplied(16) + kGreenWeight * premultiplied(8) + kBlueWeight * premultiplied(0);
  const float luminance = weighted / static_cast<float>(alpha);
  const float level = std::clamp((luminance - kMiddle) * kContrast + kMiddle, 0.0f, 1.0f);
  const auto gray = static_cast<std::uint32_t>(level * static_cast<float>(alpha) + 0.5f);
  return alpha << 24 | gray << 16 | gray << 8 | gray;
}

} // namespace

Bitmap GrayscaleFilter::filtered(const Bitmap& bitmap) {
  Bitmap gray = bitmap;
  std::transform(gray.pixels.begin(), gray.pixels.end(), gray.pixels.begin(), &filteredPixel);
  return gray;
}

ImagePointer GrayscaleFilter::filtered(ImagePointer image, Size pointSize) {
  return std::make_shared<Image>(pointSize, [image = std::move(image)](int pixelWidth, int pixelHeight) {
    return filtered(image->representation(pixelWidth, pixelHeight));
  });
}

} // namespace orbel
