#include "settings/ArchivedColor.h"

#include "foundation/PropertyListCoder.h"

#include <optional>

namespace orbel {

namespace {
constexpr const char* kRed = "red";
constexpr const char* kGreen = "green";
constexpr const char* kBlue = "blue";
constexpr const char* kAlpha = "alpha";

std::optional<double> component(const PropertyList& archive, const char* name) {
  const PropertyList* value = archive.find(name);
  if (!value) return std::nullopt;
  double number = 0;
  if (const double* real = value->real()) {
    number = *real;
  } else if (const std::int64_t* integer = value->integer()) {
    number = static_cast<double>(*integer); // other writers store 1.0 as 1
  } else {
    return std::nullopt;
  }
  // Written so that what is not a number fails too.
  return number >= 0 && number <= 1 ? std::optional(number) : std::nullopt;
}
} // namespace

PropertyList::Data ArchivedColor::archive(const Color& color) {
  const PropertyList::Dictionary components = {
      {kRed, color.red}, {kGreen, color.green}, {kBlue, color.blue}, {kAlpha, color.alpha}};
  return PropertyListCoder::write(components, PropertyListCoder::Format::binary);
}

Result<Color> ArchivedColor::unarchive(const PropertyList::Data& data) {
  const auto archive = PropertyListCoder::read(data);
  if (!archive) return Failure{"a stored colour cannot be read: " + archive.cause()};
  const auto red = component(*archive, kRed);
  const auto green = component(*archive, kGreen);
  const auto blue = component(*archive, kBlue);
  const auto alpha = component(*archive, kAlpha);
  if (!red || !green || !blue || !alpha)
    return Failure{"a stored colour cannot be read: it has not four components between 0 and 1"};
  return Color{*red, *green, *blue, *alpha};
}

} // namespace orbel
