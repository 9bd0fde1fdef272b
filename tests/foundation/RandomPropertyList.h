// Property lists made by chance, the same ones for the same seed.
#pragma once

#include "foundation/PropertyList.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace orbel {

class RandomPropertyList {
public:
  explicit RandomPropertyList(std::uint32_t seed) : m_random(seed) {}

  // Of every kind but dates, which the two forms keep in different precision.
  PropertyList value(int depth = 4) {
    switch (below(depth > 0 ? 8 : 6)) {
    case 0:
      return below(2) == 1;
    case 1:
      return static_cast<std::int64_t>(m_random()) << below(32);
    case 2:
      return -static_cast<std::int64_t>(m_random());
    case 3:
      return static_cast<double>(m_random()) / (1 + static_cast<double>(m_random()));
    case 4:
      return text();
    case 5:
      return data();
    case 6:
      return list(depth - 1);
    default:
      return dictionary(depth - 1);
    }
  }

  PropertyList::List list(int depth) {
    PropertyList::List list;
    for (std::size_t count = below(5); count > 0; --count)
      list.push_back(value(depth));
    return list;
  }

  PropertyList::Dictionary dictionary(int depth) {
    PropertyList::Dictionary dictionary;
    for (std::size_t count = below(5); count > 0; --count)
      dictionary.insert_or_assign(text(), value(depth));
    return dictionary;
  }

  std::string text() {
    static const std::vector<std::string> kPieces = {"a",
                                                     "Z",
                                                     " ",
                                                     "<",
                                                     "&",
                                                     ">",
                                                     "\"",
                                                     "'",
                                                     "\n",
                                                     "\t",
                                                     "]]>",
                                                     "\xC3\xA9",
                                                     "\xE2\x82\xAC",
                                                     "\xF0\x9F\x98\x80",
                                                     "--",
                                                     "/",
                                                     "é",
                                                     "CF$UID"};
    std::string result;
    for (std::size_t count = below(9); count > 0; --count)
      result += kPieces[below(kPieces.size())];
    return result;
  }

  PropertyList::Data data() {
    PropertyList::Data data(below(70));
    for (auto& byte : data)
      byte = static_cast<std::byte>(below(256));
    return data;
  }

  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(m_random()) % limit; }

private:
  std::mt19937 m_random;
};

} // namespace orbel
