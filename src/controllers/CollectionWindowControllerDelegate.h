// What a collection's menu leaves to the main menu: closing, saving and hiding.
#pragma once

namespace orbel {

class CollectionWindowControllerDelegate {
public:
  virtual ~CollectionWindowControllerDelegate() = default;
  // Its close button was clicked, or it was dismissed by key.
  virtual void collectionWindowControllerShouldClose() = 0;
  // After every change of the members.
  virtual void collectionWindowControllerShouldPersistItems() {}
  // A member was opened.
  virtual void collectionWindowControllerDidSelectItem() = 0;
};

} // namespace orbel
