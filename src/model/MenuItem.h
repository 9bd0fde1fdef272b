// One entry of a menu, of whatever kind: what the controllers may ask of it without knowing the kind.
// The defaults here are those of an entry that can do nothing; each kind overrides what it can do. Items are
// shared: lists, delayed blocks and drawings hold them. Main thread only, with Platform::current() set.
#pragma once

#include "foundation/PropertyList.h"
#include "scene/Image.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel {

class MenuItem;
using MenuItemPointer = std::shared_ptr<MenuItem>;
using MenuItemList = std::vector<MenuItemPointer>;

class MenuItem {
public:
  // Reads a stored item: a dictionary whose "class" is the name of one of the four stored kinds. Empty,
  // without a word in the log, for any other class, for a dictionary without one, and for a value that is no
  // dictionary at all; empty, with a logged cause, for an application whose bookmark leads nowhere. Never
  // fails for a missing or malformed name.
  static MenuItemPointer withDictionaryRepresentation(const PropertyList& dictionary);

  virtual ~MenuItem() = default;
  MenuItem(const MenuItem&) = delete;
  MenuItem& operator=(const MenuItem&) = delete;

  // Names the content: the kind followed by a path, a name or the members. Two items with equal
  // identities stand for the same thing and share one icon in the image cache. A description of this very
  // object by default.
  virtual std::string identity() const;
  // As shown; none when the item was stored without one.
  virtual std::optional<std::string> name() const { return std::nullopt; }
  virtual bool canRename() const { return false; }
  virtual void rename(const std::string& /*name*/) {}
  // 320 by 320 points, y up; may be empty. Its pixels are made when it is first drawn.
  virtual ImagePointer image() const { return nullptr; }

  // Opens what the item stands for; a failure is logged at most.
  virtual void open() {}
  virtual bool isRunning() const { return false; }

  // Whether the item opens dropped documents. Paths are absolute.
  virtual bool canOpenPath(const std::string& /*path*/) const { return false; }
  virtual void openPath(const std::string& /*path*/) {}

  // The applications that can open the item, the default one first; empty when nothing can, none when the
  // question makes no sense for the kind.
  virtual std::optional<std::vector<std::string>> openWithAppPaths() const { return std::nullopt; }
  virtual void openWithAppPath(const std::string& /*appPath*/) {}

  virtual bool canQuit() const { return false; }
  // Asks the companion to quit the item's program.
  virtual void quit() {}

  // The members in menu order, a copy; none for an item that cannot hold any.
  virtual bool canHoldSubitems() const { return false; }
  virtual std::optional<MenuItemList> subitems() const { return std::nullopt; }
  virtual void addSubitem(const MenuItemPointer& /*item*/) {}
  // Every occurrence of that very object.
  virtual void removeSubitem(const MenuItemPointer& /*item*/) {}
  // Before the member at the index; an index past the end appends.
  virtual void insertSubitem(const MenuItemPointer& /*item*/, std::size_t /*index*/) {}

  // The stored form that withDictionaryRepresentation() reads; none for an item that is never stored.
  virtual std::optional<PropertyList> dictionaryRepresentation() const { return std::nullopt; }

protected:
  MenuItem() = default;
};

} // namespace orbel
