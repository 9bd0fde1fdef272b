#include "foundation/KeyedArchive.h"

#include "foundation/Log.h"
#include "foundation/PropertyListCoder.h"

#include <utility>
#include <variant>

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

std::optional<KeyedArchive::Object> refuse(const std::string& cause) {
  Log::warning("a stored archive cannot be read: " + cause);
  return std::nullopt;
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

std::optional<KeyedArchive::Object> KeyedArchive::unarchive(const PropertyList::Data& data) {
  const PropertyListCoder::Result result = PropertyListCoder::read(data);
  if (const auto* failure = std::get_if<PropertyListCoder::Failure>(&result)) return refuse(failure->cause);
  const PropertyList& archive = std::get<PropertyList>(result);
  const PropertyList* archiver = archive.find("$archiver");
  if (!archiver || !archiver->string() || *archiver->string() != kArchiver)
    return refuse("it is no keyed archive");
  const PropertyList* objects = archive.find("$objects");
  if (!objects || !objects->list()) return refuse("it has no list of objects");
  const PropertyList* top = archive.find("$top");
  const PropertyList* root = top ? referenced(top->find("root"), *objects->list()) : nullptr;
  if (!root) return refuse("its root leads to no object");
  if (isNull(*root)) return std::nullopt;
  auto object = objectFrom(*root, *objects->list());
  if (!object) return refuse("its root is no object of a named class");
  return object;
}

} // namespace orbel
