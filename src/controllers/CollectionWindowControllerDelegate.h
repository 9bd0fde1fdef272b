// What a collection's menu leaves to the main menu: closing, saving and hiding. A menu that is fading out may
// still report what was begun in it; the sender shows which menu it is.
#pragma once

namespace orbel {

class CollectionWindowController;

class CollectionWindowControllerDelegate {
public:
  virtual ~CollectionWindowControllerDelegate() = default;
  // Its close button was clicked, or it was dismissed by key.
  virtual void collectionWindowControllerShouldClose(const CollectionWindowController& sender) = 0;
  // After every change of the members.
  virtual void collectionWindowControllerShouldPersistItems() {}
  // A member was opened.
  virtual void collectionWindowControllerDidSelectItem(const CollectionWindowController& sender) = 0;
};

} // namespace orbel
