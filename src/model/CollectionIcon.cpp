#include "model/CollectionIcon.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orbel {

namespace {

constexpr Color kFillColor = Color::white(0.0, 0.2);
constexpr Color kStrokeColor = Color::white(1.0, 0.5);
constexpr double kInset = 1;               // points
constexpr double kLineWidth = 1;           // points
constexpr double kCircleRadius = 0.3;      // of the width
constexpr double kLargestMember = 0.25;    // of the width
constexpr double kShareToSide = 1.41;      // deliberately not the exact root of two
constexpr double kSmallestDrawnSide = 0.5; // device pixels; what is smaller is rounded to nothing

} // namespace

Rect CollectionIcon::memberFrame(const Rect& destination, std::size_t index, std::size_t memberCount) {
  const double width = destination.size.width;
  const double radius = kCircleRadius * width;
  const double step = 2 * std::numbers::pi / static_cast<double>(memberCount);
  const double angle = 0.5 * step + static_cast<double>(index) * step;
  const double side = std::min(kLargestMember * width, radius * step / kShareToSide);
  const Point center = {destination.midX() + radius * std::sin(angle),
                        destination.midY() + radius * std::cos(angle)};
  return Rect::centeredAt(center, side);
}

void CollectionIcon::draw(Canvas& canvas, const Rect& destination, const MenuItemList& members) {
  const Rect disc = destination.insetBy(kInset, kInset);
  canvas.fillEllipse(disc, kFillColor);
  canvas.strokeEllipse(disc, kStrokeColor, kLineWidth);
  for (std::size_t index = 0; index < members.size(); ++index) {
    const Rect frame = memberFrame(destination, index, members.size());
    // Fetching icons that cannot be seen would be expensive: a collection may have thousands of members, and
    // collections within collections shrink to nothing.
    if (frame.size.width * canvas.scale() < kSmallestDrawnSide) return;
    if (const ImagePointer image = members[index]->image()) canvas.drawImage(*image, frame);
  }
}

} // namespace orbel
