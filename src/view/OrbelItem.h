// The view of one entry on the circle: its icon, a dot below it while highlighted (its program runs), a dark
// silhouette over it while selected (it is a drop target), and on request a bubble with its title. Points, y
// up, origin at the item's bottom-left corner. Takes no events: the radial view handles them all and sets the
// frame, which is the item's only geometry. Made by the controllers, shown by the radial view.
#pragma once

#include "foundation/Color.h"
#include "platform/Bubble.h"
#include "scene/Image.h"
#include "scene/View.h"

#include <memory>
#include <optional>
#include <string>

namespace orbel {

class OrbelItem : public View {
public:
  // The dot: its diameter, and how far its bottom lies below the item's.
  static constexpr double kDotSide = 6;
  static constexpr double kDotDrop = 9;
  static constexpr double kSelectedOpacity = 0.5;

  explicit OrbelItem(const Rect& frame);
  // With the frame (0, 0, 48, 48).
  OrbelItem(ImagePointer image, std::optional<std::string> title);

  const ImagePointer& image() const { return m_image; }
  void setImage(ImagePointer image);

  const std::optional<std::string>& title() const { return m_title; }
  // Makes a bubble of its own for the new title, or none. A bubble that shows the old title is left as it is
  // until closeTitle(), or until the new one is shown.
  void setTitle(std::optional<std::string> title);

  bool highlighted() const { return m_highlighted; }
  void setHighlighted(bool highlighted);
  const std::optional<Color>& highlightColor() const { return m_highlightColor; }
  // With none the dot keeps the colour it has.
  void setHighlightColor(std::optional<Color> color);

  bool selected() const { return m_selected; }
  // An item without an image has no silhouette to darken.
  void setSelected(bool selected);

  // The bubble of the title; none without a title. Made when first asked for.
  Bubble* titlePopover();
  // Below the item as it is painted now. Does nothing without a title or outside a surface; cheap when it
  // shows already.
  void showTitle();
  void closeTitle();
  // Takes the other's place on the screen, an open bubble of the same title included.
  void replace(OrbelItem& other);

  // What lies over the icon, from bottom to top, for the target frame.
  struct SelectionLayer {
    Rect frame;
    double opacity = 0;
    ImagePointer mask; // the overlay has the shape of its opaque parts
  };
  struct HighlightLayer {
    Rect frame;
    Color color;
    bool hidden = true;
  };
  SelectionLayer selectionLayer() const { return {bounds(), m_selectionOpacity, m_image}; }
  HighlightLayer highlightLayer() const {
    return {dotFrame(bounds().size.width), m_dotColor, !m_highlighted};
  }

  void draw(Canvas& canvas) override;
  // The dot, and a point for its smoothed edge.
  double drawingOverhang() const override { return kDotDrop + 1; }

protected:
  void presentationDidChange() override;

private:
  static Rect dotFrame(double itemWidth) {
    return {itemWidth / 2 - kDotSide / 2, -kDotDrop, kDotSide, kDotSide};
  }
  const Surface* surface() const; // that it is painted on; none outside a window
  Rect anchorInWindow() const;

  ImagePointer m_image;
  std::optional<std::string> m_title;
  bool m_highlighted = false;
  std::optional<Color> m_highlightColor = Color::gray();
  Color m_dotColor = Color::gray();
  bool m_selected = false;
  double m_selectionOpacity = 0;
  std::unique_ptr<Bubble> m_titlePopover;
  std::unique_ptr<Bubble> m_outgoingPopover; // still shows the title that was replaced
};

} // namespace orbel
