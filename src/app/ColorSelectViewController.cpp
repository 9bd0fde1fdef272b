#include "app/ColorSelectViewController.h"

#include "platform/Platform.h"

#include <array>
#include <cstddef>

namespace orbel {

namespace {
constexpr double kBorderWidth = 1;

// White and graphite first; the others follow the circle of hues. All are strong enough to be distinguished
// over the dark frost, of which they leave four tenths to be seen.
constexpr std::array<Color, 12> kOfferedColors{{
    {1, 1, 1},
    {0.45, 0.50, 0.57},
    {0.26, 0.29, 0.34},
    {0.10, 0.10, 0.12},
    {0.85, 0.25, 0.27},
    {0.93, 0.50, 0.17},
    {0.93, 0.73, 0.20},
    {0.33, 0.65, 0.33},
    {0.10, 0.58, 0.58},
    {0.16, 0.46, 0.86},
    {0.40, 0.31, 0.76},
    {0.84, 0.33, 0.58},
}};

std::array<std::string, kOfferedColors.size()> names() {
  const TextServices& text = Platform::current().text;
  return {text.localized("White"),    text.localized("Silver"), text.localized("Slate"),
          text.localized("Graphite"), text.localized("Red"),    text.localized("Orange"),
          text.localized("Amber"),    text.localized("Green"),  text.localized("Teal"),
          text.localized("Blue"),     text.localized("Violet"), text.localized("Pink")};
}

// Whether the view is the other one or stands in it.
bool contains(const View& view, const View& searched) {
  for (const View* current = &searched; current; current = current->superview()) {
    if (current == &view) return true;
  }
  return false;
}
} // namespace

std::shared_ptr<ColorSelectViewController>
ColorSelectViewController::withDelegate(ColorSelectViewControllerDelegate* delegate) {
  std::shared_ptr<ColorSelectViewController> controller(new ColorSelectViewController(delegate));
  controller->awakeFromNib();
  return controller;
}

ColorSelectViewController::ColorSelectViewController(ColorSelectViewControllerDelegate* delegate)
    : m_delegate(delegate) {
  const Rect frame(0, 0, kSwatchSide, kSwatchSide);
  for (const Color& color : kOfferedColors) {
    auto box = std::make_shared<SwatchView>(frame);
    box->setFillColor(color);
    box->addSubview(std::make_shared<MouseSensitiveView>(frame));
    m_boxes.push_back(std::move(box));
  }
}

void ColorSelectViewController::awakeFromNib() {
  for (const auto& box : m_boxes) {
    auto& button = static_cast<MouseSensitiveView&>(*box->subviews().front());
    button.setMouseClickBlock([self = weak_from_this(), &button](const MouseEvent&) {
      if (const auto controller = self.lock()) controller->buttonClicked(button);
    });
    box->setCornerRadius(box->frame().size.height / 2);
    box->setBorder(Color::lightGray(), kBorderWidth);
  }
}

std::vector<HostedView> ColorSelectViewController::content(const Color& present) const {
  std::vector<HostedView> views;
  for (const auto& box : m_boxes) {
    views.push_back({.view = box,
                     .accessibleName = nameOf(box->fillColor()),
                     .press =
                         [self = weak_from_this(), button = box->subviews().front()] {
                           if (const auto controller = self.lock()) controller->buttonClicked(*button);
                         },
                     .isCurrent = box->fillColor() == present});
  }
  return views;
}

void ColorSelectViewController::buttonClicked(const View& button) const {
  for (const auto& box : m_boxes) {
    if (box->subviews().empty() || !contains(*box->subviews().front(), button)) continue;
    if (m_delegate) m_delegate->didSelectColor(box->fillColor());
    return;
  }
}

std::string ColorSelectViewController::nameOf(const Color& color) {
  for (std::size_t index = 0; index < kOfferedColors.size(); ++index) {
    if (kOfferedColors[index] == color) return names()[index];
  }
  return {};
}

} // namespace orbel
