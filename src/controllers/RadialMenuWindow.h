// A menu window with its radial view and the close button in its centre. Made transparent and off the screen.
// The controller owns it and is the view's data source and delegate; both are taken out of the view when the
// window is destroyed.
#pragma once

#include "chrome/CloseButton.h"
#include "chrome/OrbelWindow.h"
#include "view/OrbelView.h"

#include <memory>

namespace orbel {

class RadialMenuWindow {
public:
  explicit RadialMenuWindow(SurfaceLevel level);
  ~RadialMenuWindow();

  OrbelWindow& window() const { return *m_window; }
  OrbelView& orbelView() const { return *m_orbelView; }
  CloseButton& closeButton() const { return *m_closeButton; }

  // Fills the view from the data source.
  void attach(OrbelViewDataSource& dataSource, OrbelViewDelegate& delegate);
  // The view asks and calls neither any more.
  void detach();
  // A square of that side, in screen points, around the point.
  void setFrame(Point center, double side);
  // Takes tint and magnification from the settings; the tint also reloads the view.
  void refreshTint();
  void refreshMagnification();
  // The same while the menu is open: the items take their new sizes at once, under a pointer that rests.
  void magnificationChanged();

private:
  std::unique_ptr<OrbelWindow> m_window;
  std::shared_ptr<OrbelView> m_orbelView;
  std::shared_ptr<CloseButton> m_closeButton;
};

} // namespace orbel
