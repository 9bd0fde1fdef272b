// A property-list value: boolean, 64-bit integer, double, string, data, date, ordered list or string-keyed
// dictionary. Strings are UTF-8. Dates are seconds since 2001-01-01T00:00:00Z, the epoch of the property-list
// format. A UID of a keyed archive is a dictionary with the single key "CF$UID" and an integer, as the XML
// form writes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace orbel {

class PropertyList {
public:
  struct Date {
    double secondsSince2001 = 0;
    friend bool operator==(const Date&, const Date&) = default;
  };
  using Data = std::vector<std::byte>;
  using List = std::vector<PropertyList>;
  using Dictionary = std::map<std::string, PropertyList, std::less<>>;

  PropertyList() : m_value(std::string()) {}
  PropertyList(bool value) : m_value(value) {}
  PropertyList(std::int64_t value) : m_value(value) {}
  PropertyList(int value) : m_value(static_cast<std::int64_t>(value)) {}
  PropertyList(double value) : m_value(value) {}
  PropertyList(std::string value) : m_value(std::move(value)) {}
  PropertyList(const char* value) : m_value(std::string(value)) {}
  PropertyList(Data value) : m_value(std::move(value)) {}
  PropertyList(Date value) : m_value(value) {}
  PropertyList(List value) : m_value(std::move(value)) {}
  PropertyList(Dictionary value) : m_value(std::move(value)) {}
  template <typename T>
  PropertyList(T*) = delete; // a stray pointer must not become a boolean

  // Out of line: inlined everywhere they are much code, and gcc 12 warns of paths in it that cannot be taken.
  PropertyList(const PropertyList&);
  PropertyList(PropertyList&&) noexcept;
  PropertyList& operator=(const PropertyList&);
  PropertyList& operator=(PropertyList&&) noexcept;
  ~PropertyList();

  // The value of that exact type, or nothing.
  const bool* boolean() const { return std::get_if<bool>(&m_value); }
  const std::int64_t* integer() const { return std::get_if<std::int64_t>(&m_value); }
  const double* real() const { return std::get_if<double>(&m_value); }
  const std::string* string() const { return std::get_if<std::string>(&m_value); }
  const Data* data() const { return std::get_if<Data>(&m_value); }
  const Date* date() const { return std::get_if<Date>(&m_value); }
  const List* list() const { return std::get_if<List>(&m_value); }
  const Dictionary* dictionary() const { return std::get_if<Dictionary>(&m_value); }

  // The value under the key when this is a dictionary that holds it; otherwise none.
  const PropertyList* find(std::string_view key) const;

  friend bool operator==(const PropertyList& left, const PropertyList& right) { return left.isEqual(right); }

private:
  bool isEqual(const PropertyList& other) const;

  std::variant<bool, std::int64_t, double, std::string, Data, Date, List, Dictionary> m_value;
};

} // namespace orbel
