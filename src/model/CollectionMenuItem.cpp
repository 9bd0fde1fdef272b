#include "model/CollectionMenuItem.h"

#include "model/CollectionIcon.h"
#include "model/ImageCache.h"
#include "model/StoredItem.h"
#include "platform/Platform.h"

#include <algorithm>
#include <iterator>

namespace orbel {

CollectionMenuItem::CollectionMenuItem(std::optional<std::string> name) : m_name(std::move(name)) {}

std::shared_ptr<CollectionMenuItem> CollectionMenuItem::withName(const std::string& name) {
  return std::shared_ptr<CollectionMenuItem>(new CollectionMenuItem(name));
}

std::shared_ptr<CollectionMenuItem>
CollectionMenuItem::withDictionaryRepresentation(const PropertyList& dictionary) {
  std::shared_ptr<CollectionMenuItem> collection(new CollectionMenuItem(StoredItem::name(dictionary)));
  const PropertyList* members = dictionary.find(StoredItem::kSubitemsKey);
  if (!members) return collection;
  if (!members->list()) {
    collection->m_droppedMembers = true;
    return collection;
  }
  for (const PropertyList& stored : *members->list()) {
    if (auto member = MenuItem::withDictionaryRepresentation(stored)) {
      collection->m_subitems.push_back(std::move(member));
    } else {
      collection->m_droppedMembers = true;
    }
  }
  return collection;
}

std::string CollectionMenuItem::identity() const {
  std::vector<std::string> identities;
  identities.reserve(m_subitems.size());
  for (const auto& member : m_subitems)
    identities.push_back(member->identity());
  const TextServices& text = Platform::current().text;
  std::sort(identities.begin(), identities.end(), [&text](const std::string& left, const std::string& right) {
    const int order = text.compareLocalizedCaseInsensitive(left, right);
    // Paths that differ in case alone are different members, and their order must not play a part.
    return order != 0 ? order < 0 : left < right;
  });
  std::string identity = kClassName;
  for (std::size_t index = 0; index < identities.size(); ++index) {
    if (index > 0) identity += '-';
    identity += identities[index];
  }
  return identity;
}

ImagePointer CollectionMenuItem::image() const {
  ImageCache& cache = ImageCache::sharedCache();
  const std::string key = identity();
  if (auto cached = cache.imageForKey(key)) return cached;
  // The image outlives this object in the cache and serves the next one that is read with the same members;
  // at a larger size it is then drawn from the members of now.
  auto image = Platform::current().graphics.drawnImage(
      CollectionIcon::kSize, [collection = weak_from_this(), lastMembers = m_subitems](Canvas& canvas) {
        const auto living = collection.lock();
        const MenuItemList members = living ? living->m_subitems : lastMembers;
        CollectionIcon::draw(canvas, {{}, CollectionIcon::kSize}, members);
      });
  cache.storeImage(image, key);
  return image;
}

bool CollectionMenuItem::isRunning() const {
  return std::any_of(m_subitems.begin(), m_subitems.end(),
                     [](const auto& member) { return member->isRunning(); });
}

std::optional<PropertyList> CollectionMenuItem::dictionaryRepresentation() const {
  PropertyList::List members;
  members.reserve(m_subitems.size());
  for (const auto& member : m_subitems) {
    if (auto stored = member->dictionaryRepresentation()) members.push_back(*std::move(stored));
  }
  auto dictionary = StoredItem::dictionary(kClassName, m_name);
  dictionary.emplace(StoredItem::kSubitemsKey, std::move(members));
  return dictionary;
}

void CollectionMenuItem::addSubitem(const MenuItemPointer& item) {
  insertSubitem(item, m_subitems.size());
}

void CollectionMenuItem::removeSubitem(const MenuItemPointer& item) {
  discardCachedImage();
  std::erase(m_subitems, item);
}

void CollectionMenuItem::insertSubitem(const MenuItemPointer& item, std::size_t index) {
  if (!item) return;
  discardCachedImage();
  const auto place = static_cast<std::ptrdiff_t>(std::min(index, m_subitems.size()));
  m_subitems.insert(std::next(m_subitems.begin(), place), item);
}

bool CollectionMenuItem::representsRunningApplication(const RunningApplication& application) const {
  return std::any_of(m_subitems.begin(), m_subitems.end(), [&application](const auto& member) {
    const auto* matching = dynamic_cast<const RepresentsRunningApplication*>(member.get());
    return matching && matching->representsRunningApplication(application);
  });
}

bool CollectionMenuItem::hasDroppedMembers() const {
  if (m_droppedMembers) return true;
  return std::any_of(m_subitems.begin(), m_subitems.end(), [](const auto& member) {
    const auto* collection = dynamic_cast<const CollectionMenuItem*>(member.get());
    return collection && collection->hasDroppedMembers();
  });
}

void CollectionMenuItem::discardCachedImage() const {
  ImageCache::sharedCache().removeImageForKey(identity());
}

} // namespace orbel
