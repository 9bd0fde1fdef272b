// A named group of items, shown as a dark disc with its members' icons in a circle. It opens nothing by
// itself: the controller shows its members in a menu of their own. The only kind that holds others and can
// be renamed.
#pragma once

#include "model/MenuItem.h"
#include "model/RepresentsRunningApplication.h"

#include <utility>

namespace orbel {

class CollectionMenuItem : public MenuItem,
                           public RepresentsRunningApplication,
                           public std::enable_shared_from_this<CollectionMenuItem> {
public:
  static constexpr const char* kClassName = "CollectionMenuItem";

  // A new, empty collection.
  static std::shared_ptr<CollectionMenuItem> withName(const std::string& name);
  // Never empty. Members that cannot be read are dropped; the others keep their order.
  static std::shared_ptr<CollectionMenuItem> withDictionaryRepresentation(const PropertyList& dictionary);

  // From the members' identities in sorted order, so neither their order nor the name plays a part.
  std::string identity() const override;
  std::optional<std::string> name() const override { return m_name; }
  bool canRename() const override { return true; }
  void rename(const std::string& name) override { m_name = name; }
  void setName(std::string name) { m_name = std::move(name); }
  ImagePointer image() const override;
  bool isRunning() const override;
  bool canQuit() const override { return false; }
  std::optional<PropertyList> dictionaryRepresentation() const override;

  bool canHoldSubitems() const override { return true; }
  std::optional<MenuItemList> subitems() const override { return m_subitems; }
  // The same without a copy, until the next change.
  const MenuItemList& members() const { return m_subitems; }
  // Each change discards the cached icon. An empty pointer is not added.
  void addSubitem(const MenuItemPointer& item) override;
  void removeSubitem(const MenuItemPointer& item) override;
  void insertSubitem(const MenuItemPointer& item, std::size_t index) override;

  // Any member represents it.
  bool representsRunningApplication(const RunningApplication& application) const override;

  // Reading dropped a member, here or in a collection among the members: the next write would lose it for
  // good, so the controller keeps a copy of the stored file before.
  bool hasDroppedMembers() const;

private:
  explicit CollectionMenuItem(std::optional<std::string> name);
  void discardCachedImage() const;

  std::optional<std::string> m_name;
  MenuItemList m_subitems;
  bool m_droppedMembers = false;
};

} // namespace orbel
