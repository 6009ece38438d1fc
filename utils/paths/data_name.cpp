#include "utils/paths/data_name.h"

#include <emmintrin.h>

namespace kv::internal {
namespace {

// Changes the text from `position` on, a block at a time. `change` leaves NULs as they are.
template <std::size_t Capacity, typename Change>
void ChangeFrom(BoundedText<Capacity>& text, std::size_t position, Change change) {
  for (; position < text.Size(); position += kTextBlock) {
    auto* const block = reinterpret_cast<__m128i*>(text.GetFrom(position));
    _mm_storeu_si128(block, change(_mm_loadu_si128(block)));
  }
}

__m128i WithBackslashes(__m128i block) {
  const __m128i isColon = _mm_cmpeq_epi8(block, _mm_set1_epi8(':'));
  const __m128i isSlash = _mm_cmpeq_epi8(block, _mm_set1_epi8('/'));
  const __m128i isOther = _mm_or_si128(isColon, isSlash);
  return _mm_or_si128(_mm_andnot_si128(isOther, block),
                      _mm_and_si128(isOther, _mm_set1_epi8('\\')));
}

// Bytes above 127 are negative here, and so below "A".
__m128i InLowerCase(__m128i block) {
  const __m128i isFromA = _mm_cmpgt_epi8(block, _mm_set1_epi8('A' - 1));
  const __m128i isToZ = _mm_cmplt_epi8(block, _mm_set1_epi8('Z' + 1));
  const __m128i isUpper = _mm_and_si128(isFromA, isToZ);
  return _mm_or_si128(block, _mm_and_si128(isUpper, _mm_set1_epi8('a' - 'A')));
}

}  // namespace

NameText Candidate::Text() const {
  NameText text;
  if (isVariant_) text.Append(languageFolder_).Append(":");
  text.Append(name_);
  return text;
}

PathText Candidate::In(const char* folder) const {
  PathText path;
  path.Append(NameView(folder));
  const std::size_t start = path.Size();
  // Without a language folder the ":" of a variant is its leading separator.
  if (!languageFolder_.empty()) path.Append(WithoutLeadingSeparator(languageFolder_)).Append(":");
  path.Append(isVariant_ ? name_ : WithoutLeadingSeparator(name_));
  ChangeFrom(path, start, WithBackslashes);
  return path;
}

NameText LowerCase(std::string_view name) {
  NameText lower;
  lower.Append(name);
  ChangeFrom(lower, 0, InLowerCase);
  return lower;
}

NameText ListedForm(std::string_view name) {
  NameText listed = LowerCase(name);
  ChangeFrom(listed, 0, WithBackslashes);
  return listed;
}

}  // namespace kv::internal
