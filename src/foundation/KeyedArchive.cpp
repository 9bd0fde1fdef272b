#include "foundation/KeyedArchive.h"

#include "foundation/PropertyListCoder.h"

#include <utility>

namespace orbel {

namespace {

constexpr const char* kArchiver = "NSKeyedArchiver";
constexpr std::int64_t kVersion = 100000;
constexpr const char* kNull = "$null"; // always the first of the objects
constexpr const char* kRootClass = "NSObject";

PropertyList reference(std::int64_t index) {
  return PropertyList::Dictionary{{"CF$UID", index}};
}

// The object that a reference leads to.
const PropertyList* referenced(const PropertyList* value, const PropertyList::List& objects) {
  const PropertyList* number = value ? value->find("CF$UID") : nullptr;
  const std::int64_t* index = number ? number->integer() : nullptr;
  if (!index || *index < 0 || static_cast<std::uint64_t>(*index) >= objects.size()) return nullptr;
  return &objects[static_cast<std::size_t>(*index)];
}

bool isNull(const PropertyList& object) {
  return object.string() && *object.string() == kNull;
}

std::optional<KeyedArchive::Object> objectFrom(const PropertyList& stored,
                                               const PropertyList::List& objects) {
  const auto* entries = stored.dictionary();
  const PropertyList* description = referenced(stored.find("$class"), objects);
  const PropertyList* className = description ? description->find("$classname") : nullptr;
  if (!entries || !className || !className->string()) return std::nullopt;
  KeyedArchive::Object object{*className->string(), {}};
  for (const auto& [key, value] : *entries) {
    // A number may also be archived as an object of its own.
    const PropertyList* target = value.integer() ? &value : referenced(&value, objects);
    if (target && target->integer()) object.fields.emplace(key, *target->integer());
  }
  return object;
}

Failure refusal(const std::string& cause) {
  return {"a stored archive cannot be read: " + cause};
}

} // namespace

PropertyList::Data KeyedArchive::archive(const std::optional<Object>& root) {
  PropertyList::List objects = {kNull};
  if (root) {
    PropertyList::Dictionary stored = {{"$class", reference(2)}};
    for (const auto& [key, value] : root->fields)
      stored.insert_or_assign(key, value);
    objects.emplace_back(std::move(stored));
    objects.emplace_back(PropertyList::Dictionary{
        {"$classname", root->className}, {"$classes", PropertyList::List{root->className, kRootClass}}});
  }
  const PropertyList::Dictionary archive = {
      {"$archiver", kArchiver},
      {"$version", kVersion},
      {"$top", PropertyList::Dictionary{{"root", reference(root ? 1 : 0)}}},
      {"$objects", std::move(objects)}};
  return PropertyListCoder::write(archive, PropertyListCoder::Format::binary);
}

Result<std::optional<KeyedArchive::Object>> KeyedArchive::unarchive(const PropertyList::Data& data) {
  const auto archive = PropertyListCoder::read(data);
  if (!archive) return refusal(archive.cause());
  const PropertyList* archiver = archive->find("$archiver");
  if (!archiver || !archiver->string() || *archiver->string() != kArchiver)
    return refusal("it is no keyed archive");
  const PropertyList* objects = archive->find("$objects");
  if (!objects || !objects->list()) return refusal("it has no list of objects");
  const PropertyList* top = archive->find("$top");
  const PropertyList* root = top ? referenced(top->find("root"), *objects->list()) : nullptr;
  if (!root) return refusal("its root leads to no object");
  if (isNull(*root)) return std::nullopt;
  auto object = objectFrom(*root, *objects->list());
  if (!object) return refusal("its root is no object of a named class");
  return object;
}

} // namespace orbel
