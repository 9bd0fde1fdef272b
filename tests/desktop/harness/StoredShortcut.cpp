#include "tests/desktop/harness/StoredShortcut.h"

#include "tests/desktop/harness/PropertyListNode.h"

namespace orbel::test {

namespace {

using Node = PropertyListNode;

constexpr std::int64_t kArchiveVersion = 100000;
constexpr std::uint64_t kNothing = 0;
constexpr std::uint64_t kRoot = 1;
constexpr std::uint64_t kClass = 2;

std::string archive(std::uint64_t root, Node objects) {
  return Node::dictionary()
      .with("$archiver", Node::string("NSKeyedArchiver"))
      .with("$version", Node::integer(kArchiveVersion))
      .with("$top", Node::dictionary().with("root", Node::uid(root)))
      .with("$objects", std::move(objects))
      .serialized(PropertyListFormat::binary);
}

} // namespace

std::string StoredShortcut::archived() const {
  return archive(
      kRoot,
      Node::array()
          .with(Node::string("$null"))
          .with(Node::dictionary()
                    .with("$class", Node::uid(kClass))
                    .with("KeyCode", Node::integer(keyCode))
                    .with("ModifierFlags", Node::integer(modifierFlags)))
          .with(Node::dictionary()
                    .with("$classname", Node::string("MASShortcut"))
                    .with("$classes",
                          Node::array().with(Node::string("MASShortcut")).with(Node::string("NSObject")))));
}

std::string StoredShortcut::archivedNothing() {
  return archive(kNothing, Node::array().with(Node::string("$null")));
}

std::optional<StoredShortcut> StoredShortcut::unarchived(const std::string& archive) {
  const Node list = Node::parse(archive);
  const auto root = uidIn(valueIn(valueIn(list.get(), "$top"), "root"));
  if (!root || *root == kNothing) return std::nullopt;
  const plist_t object = elementIn(valueIn(list.get(), "$objects"), *root);
  const auto keyCode = integerIn(valueIn(object, "KeyCode"));
  const auto modifierFlags = integerIn(valueIn(object, "ModifierFlags"));
  if (!keyCode || !modifierFlags) return std::nullopt;
  return StoredShortcut{*keyCode, *modifierFlags};
}

} // namespace orbel::test
