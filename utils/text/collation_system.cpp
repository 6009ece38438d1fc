#include "utils/text/collation_system.h"

#include "utils/internal/text_length.h"

#include <algorithm>
#include <cstddef>

namespace {

using namespace kv::internal;

// The size to convert. Beyond the range of int the system itself measures, and refuses.
int SizeWithTerminator(const char* text) {
  if (text == nullptr) return SystemText::kWithTerminator;
  const std::size_t size = TextLength(text) + 1;
  return size <= INT_MAX ? static_cast<int>(size) : SystemText::kWithTerminator;
}

}  // namespace

int kv::internal::CompareUnits(const wchar_t* a, int sizeOfA, const wchar_t* b, int sizeOfB,
                               unsigned flags) {
  const int result =
      ::CompareStringEx(LOCALE_NAME_INVARIANT, flags, a, sizeOfA, b, sizeOfB, nullptr, nullptr, 0);
  return result == 0 ? kComparisonFailed : result - CSTR_EQUAL;
}

int kv::internal::CompareConverted(const SystemText& a, const SystemText& b, unsigned flags,
                                   int limit) {
  if (!a.IsValid() || !b.IsValid()) return kComparisonFailed;
  return CompareUnits(a.Get(), std::min(a.Size(), limit), b.Get(), std::min(b.Size(), limit),
                      flags);
}

int kv::internal::CompareBySystem(const char* a, const char* b, unsigned flags) {
  return CompareConverted(SystemText(kUtf8CodePage, a, SizeWithTerminator(a)),
                          SystemText(kUtf8CodePage, b, SizeWithTerminator(b)), flags);
}
