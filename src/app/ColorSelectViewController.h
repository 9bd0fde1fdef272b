// The colours that the user may tint the menu with, as round swatches to click. Made by the settings window's
// controller for one popover; reports the chosen colour to its delegate. Sizes in points.
#pragma once

#include "chrome/MouseSensitiveView.h"
#include "chrome/SwatchView.h"
#include "foundation/Color.h"
#include "platform/HostedView.h"

#include <memory>
#include <string>
#include <vector>

namespace orbel {

class ColorSelectViewControllerDelegate {
public:
  virtual ~ColorSelectViewControllerDelegate() = default;
  virtual void didSelectColor(const Color& color) = 0;
};

class ColorSelectViewController : public std::enable_shared_from_this<ColorSelectViewController> {
public:
  static constexpr double kSwatchSide = 26;
  static constexpr int kColumns = 4;

  // The delegate is borrowed and outlives the controller.
  static std::shared_ptr<ColorSelectViewController> withDelegate(ColorSelectViewControllerDelegate* delegate);

  // One box a colour, each with a button inside.
  const std::vector<std::shared_ptr<SwatchView>>& boxes() const { return m_boxes; }
  // What a popover shows, in rows of kColumns; the swatch of the present colour is the current one.
  std::vector<HostedView> content(const Color& present) const;
  // Reports to the delegate the fill colour of the box that contains the button; for any other view, nothing.
  void buttonClicked(const View& button) const;

  // In the user's language; empty for a colour that is not among those offered.
  static std::string nameOf(const Color& color);

private:
  explicit ColorSelectViewController(ColorSelectViewControllerDelegate* delegate);
  void awakeFromNib();

  ColorSelectViewControllerDelegate* m_delegate;
  std::vector<std::shared_ptr<SwatchView>> m_boxes;
};

} // namespace orbel
