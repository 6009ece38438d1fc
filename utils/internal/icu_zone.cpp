#include "utils/internal/icu_zone.h"

#include "utils/internal/icu_setup.h"

#include <unicode/unistr.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace kv::internal {
namespace {

constexpr std::size_t kLongestName = std::numeric_limits<std::int32_t>::max();  // ICU's own limit

}  // namespace

std::unique_ptr<icu::TimeZone> MakeZone(std::string_view name) {
  const auto length = static_cast<std::int32_t>(std::min(name.size(), kLongestName));
  const icu::StringPiece piece(name.data(), length);
  const IcuReserve reserve;
  std::unique_ptr<icu::TimeZone> zone(
      icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(piece)));
  if (reserve.IsNeeded()) zone.reset();
  return zone;
}

std::int32_t OffsetAt(const icu::TimeZone& zone, UDate instant) {
  std::int32_t rawOffset = 0;
  std::int32_t daylightOffset = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone.getOffset(instant, false, rawOffset, daylightOffset, status);
  return rawOffset + daylightOffset;
}

}  // namespace kv::internal
