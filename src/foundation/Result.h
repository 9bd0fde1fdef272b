// The answer of an operation that can fail for a reason worth reading: a value, or the failure's cause. Every
// platform interface uses it.
//
// Something else is right where there is no reason to pass on:
// - std::optional, or an empty pointer, where absence is an ordinary answer ("no such key");
// - bool where the question itself is yes or no ("is it shown?");
// - an empty Registration where an observer is not needed because there is nothing to observe.
// Whoever shows a failure to the user or decides what to do about it logs it; a backend that has answered
// with a Result does not log the same cause again. Log::warningIfFailed does it in one line. A caller for
// whom a failure changes nothing and is logged elsewhere casts the answer to void.
#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

namespace orbel {

struct Failure {
  std::string cause; // readable, English, without a full stop at its end
  friend bool operator==(const Failure&, const Failure&) = default;
};

template <class Value = void>
class [[nodiscard]] Result {
public:
  // NOLINTBEGIN(google-explicit-constructor): a function returns either of the two as it is.
  Result(Value value) : m_content(std::move(value)) {}
  Result(Failure failure) : m_content(std::move(failure)) {}
  // Also what converts to a value: a derived pointer, std::nullopt, a literal.
  template <class Other>
  requires(!std::same_as<std::remove_cvref_t<Other>, Result> &&
           !std::same_as<std::remove_cvref_t<Other>, Failure> && std::convertible_to<Other, Value>)
      Result(Other&& value)
      : m_content(std::in_place_index<0>, std::forward<Other>(value)) {}
  // NOLINTEND(google-explicit-constructor)

  bool succeeded() const { return m_content.index() == 0; }
  explicit operator bool() const { return succeeded(); }

  // Only after a success.
  Value& value() & { return std::get<0>(m_content); }
  const Value& value() const& { return std::get<0>(m_content); }
  Value&& value() && { return std::get<0>(std::move(m_content)); }
  Value& operator*() & { return value(); }
  const Value& operator*() const& { return value(); }
  Value&& operator*() && { return std::move(*this).value(); }
  Value* operator->() { return &value(); }
  const Value* operator->() const { return &value(); }
  Value valueOr(Value other) && { return succeeded() ? std::move(*this).value() : std::move(other); }

  // Empty after a success.
  std::string cause() const { return succeeded() ? std::string() : std::get<1>(m_content).cause; }
  // Only after a failure: hands it on as the answer of another operation.
  const Failure& failure() const { return std::get<1>(m_content); }

private:
  std::variant<Value, Failure> m_content;
};

// An operation that yields nothing but may fail: `return {};` is its success.
template <>
class [[nodiscard]] Result<void> {
public:
  Result() = default;
  Result(Failure failure) : m_failure(std::move(failure)) {} // NOLINT(google-explicit-constructor)

  bool succeeded() const { return !m_failure; }
  explicit operator bool() const { return succeeded(); }
  // Empty after a success.
  std::string cause() const { return m_failure ? m_failure->cause : std::string(); }
  // Only after a failure.
  const Failure& failure() const { return *m_failure; }

private:
  std::optional<Failure> m_failure;
};

} // namespace orbel
