// The circular view at the heart of the menu: lays out one item an entry around its centre, grows the item
// under the pointer, and reports clicks, moves and drops by section and position. Points with y up; angles in
// radians clockwise from twelve o'clock. It knows nothing of menu entries: the data source makes the items,
// the delegate is notified of what the user does. Both are borrowed, and clear themselves before they are
// destroyed. The window feeds the events; the pointer's place is always read at the moment of handling, never
// from the event.
#pragma once

#include "scene/View.h"
#include "view/ItemSections.h"
#include "view/OrbelItem.h"
#include "view/OrbelViewDataSource.h"
#include "view/OrbelViewDelegate.h"
#include "view/RadialGeometry.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace orbel {

class OrbelView : public View {
public:
  explicit OrbelView(const Rect& frame);

  OrbelViewDataSource* dataSource() const { return m_dataSource; }
  void setDataSource(OrbelViewDataSource* dataSource) { m_dataSource = dataSource; }
  OrbelViewDelegate* delegate() const { return m_delegate; }
  void setDelegate(OrbelViewDelegate* delegate) { m_delegate = delegate; }

  // The user's wish that items grow under the pointer; off at first.
  bool magnifyItemsOnMouseOver() const { return m_magnifyItemsOnMouseOver; }
  void setMagnifyItemsOnMouseOver(bool magnify) { m_magnifyItemsOnMouseOver = magnify; }
  // While false the view takes no events and tracks no pointer; true at first.
  bool enabled() const { return m_enabled; }
  void setEnabled(bool enabled);

  // Asks the data source for everything anew and lays out at once. An item which shows the image and the
  // title of an earlier one takes its place on the screen; the others come and leave animated.
  void reloadData();
  void layoutSubviews() { layoutSubviewsAnimated(true); }
  void layoutSubviewsAnimated(bool animated);
  // Turns the circle back, at once; the relative sizes stay.
  void resetLayout();
  void closeAllTitles();
  // Selects that item alone; nullptr selects none.
  void selectItem(const OrbelItem* item);

  // The items as they stand now; while one is dragged it stands nowhere.
  const ItemSections& sections() const { return m_sections; }
  std::int64_t totalNumberOfItems() const { return m_totalNumberOfItems; } // with the dragged one
  std::int64_t numberOfSections() const { return m_sections.numberOfSections(); }
  std::int64_t numberOfItemsInSection(std::int64_t section) const {
    return m_sections.numberOfItems(section);
  }
  // 1 is the normal size, pi + 1 the largest that the pointer gives, 0 that of a place where none was set.
  double relativeSize(ItemPath item) const { return m_sections.relativeSize(item); }
  void setRelativeSize(double size, ItemPath item) { m_sections.setRelativeSize(size, item); }

  // Of the circle on which the items' centres lie, in points.
  double radius() const { return geometry().radius(); }
  // The angle of the item's centre measured from the start of the circle; 0 for an item that is in
  // no section.
  double centerArcForItem(const OrbelItem& item) const;
  // How far the whole circle is turned.
  double startArc() const { return m_startArc; }
  // The even slot for which the sizes were last computed; -1 at rest.
  std::int64_t lastMouseOverItemIndex() const { return m_lastMouseOverItemIndex; }

  // Off while the primary button is down.
  bool zoomingEnabled() const { return m_zoomingEnabled; }
  bool didDrag() const { return m_didDrag; }
  // The item that was pressed last; kept after the release until the next reloadData().
  const std::shared_ptr<OrbelItem>& draggedItem() const { return m_draggedItem; }
  std::int64_t draggedItemOriginalSection() const { return m_draggedItemOrigin.section; }
  std::int64_t draggedItemOriginalPosition() const { return m_draggedItemOrigin.position; }
  // Where the gap is open, counted without the dragged item; kNotFound while none is.
  std::int64_t draggedItemSection() const { return m_gap.section; }
  std::int64_t draggedItemPosition() const { return m_gap.position; }
  Point draggedItemLastPoint() const { return m_draggedItemLastPoint; }

  // Itself for every point while enabled: the items never see an event.
  View* hitTest(Point pointInSuperview) override;
  void mouseMoved(const MouseEvent& event) override;
  void mouseExited(const MouseEvent& event) override;
  void mouseDown(const MouseEvent& event) override;
  void mouseDragged(const MouseEvent& event) override;
  void mouseUp(const MouseEvent& event) override;
  // The item is put back to where it was taken from; nothing is reported.
  void mouseCancelled() override;
  void rightMouseDown(const MouseEvent& event) override;

  DragOperation draggingEntered(const DragInfo& drag) override;
  DragOperation draggingUpdated(const DragInfo& drag) override;
  void draggingExited() override;
  bool prepareForDragOperation(const DragInfo& drag) override;
  bool performDragOperation(const DragInfo& drag) override;
  void concludeDragOperation() override;

protected:
  void frameDidChange() override;
  void presentationDidChange() override;

private:
  RadialGeometry geometry() const { return {frame().size, m_totalNumberOfItems}; }
  void updateTrackingAreas();

  // Reloading
  void askDataSource();
  void replaceSubviews(const std::vector<std::shared_ptr<View>>& outgoing);
  void prepareIcons() const;

  // Tracking
  enum class Titles { follow, leave };
  void trackPointer(Titles titles);
  void trackPointerAnew();
  void rest();
  enum class TitleAnswer { itemsStand, itemsReplaced };
  TitleAnswer updateTitles(Point pointer);
  void closeTitlesBeside(std::optional<Point> pointer);
  void magnifyAroundSlot(std::int64_t slot);

  // Reordering
  void moveDraggedItem(double angle);
  void makeRoomForDraggedItem(double angle);
  void finishClick();
  void finishMove();
  void finishDrop();
  ItemPath inModelNumbering(ItemPath pathWithoutDraggedItem) const;
  double probeAngle(Point pointer) const;

  // Gap and drop target
  void openGap(ItemPath gap);
  void closeGap() { m_gap = {}; }
  void markDropTarget(ItemPath target);
  void clearDropMarks();
  std::optional<double> dropAngle(const DragInfo& drag) const;
  bool supportsDrop(std::int64_t section) const;
  bool receiveDrag(const DragInfo& drag, ItemPath inFrontOf);

  OrbelViewDataSource* m_dataSource = nullptr;
  OrbelViewDelegate* m_delegate = nullptr;
  bool m_magnifyItemsOnMouseOver = false;
  bool m_enabled = true;

  ItemSections m_sections;
  std::int64_t m_totalNumberOfItems = 0;
  double m_startArc = 0;
  std::int64_t m_lastMouseOverItemIndex = -1;
  std::uint64_t m_reloads = 0; // shows a loop that asks the controller whether its items still exist
  bool m_askingForTitle = false;
  const ViewTree* m_iconsPreparedFor = nullptr;

  bool m_zoomingEnabled = true;
  bool m_pressed = false;
  bool m_didDrag = false;
  std::shared_ptr<OrbelItem> m_draggedItem;
  ItemPath m_draggedItemOrigin;
  Point m_draggedItemLastPoint;
  ItemPath m_gap;
};

} // namespace orbel
