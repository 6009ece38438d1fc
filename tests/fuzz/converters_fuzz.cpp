// The counted converters beside their defining forms, with rooms of every size.
#include <cstring>
#include <string>
#include <vector>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "tests/reference/encoding.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

template <typename Out, typename In>
using Converter = int (*)(Out*, int&, const In*, int);

// Of both forms the result, the length and what stands in the room.
template <typename Out, typename In>
void Compare(const char* name, Converter<Out, In> converter, Converter<Out, In> plain,
             std::basic_string_view<In> text, int room) {
  const GuardedCopy<In> in(text);
  const auto units = static_cast<std::size_t>(room < 0 ? 0 : room);
  const GuardedRoom<Out> out(units);
  const GuardedRoom<Out> plainOut(units);
  const auto inSize = static_cast<int>(text.size());
  int outLen = room;
  int plainOutLen = room;
  const int result = converter(out.Get(), outLen, in.Get(), inSize);
  Expect(name, result, plain(plainOut.Get(), plainOutLen, in.Get(), inSize));
  Expect("outLen", outLen, plainOutLen);
  Expect("out", out.Units(), plainOut.Units());
}

template <typename Out, typename In>
void CompareAll(const char* name, Converter<Out, In> converter, Converter<Out, In> plain,
                std::basic_string_view<In> text, Input& input) {
  int size = input.Between(-2, 40);
  int measured = size;
  int plainMeasured = size;
  const auto inSize = static_cast<int>(text.size());
  Expect(name, converter(nullptr, measured, text.data(), inSize),
         plain(nullptr, plainMeasured, text.data(), inSize));
  Expect("measured", measured, plainMeasured);
  Compare(name, converter, plain, text, size);
  // Rooms about the size of the result.
  for (const int more : {-1, 0, 1, 40}) Compare(name, converter, plain, text, measured + more);
}

// Text without surrogates comes back from UTF-8 as it was.
void CheckRoundTrip(std::string_view utf8) {
  std::wstring wide(utf8.size(), L'\0');
  auto size = static_cast<int>(wide.size());
  size = utf8_to_utf16(wide.data(), size, utf8.data(), size);
  if (size < 0) return;
  wide.resize(static_cast<std::size_t>(size));
  for (const wchar_t unit : wide) {
    if (unit >= 0xD800 && unit < 0xE000) return;
  }
  std::string back(3 * wide.size(), '\0');
  int room = static_cast<int>(back.size());
  const int bytes = utf16_to_utf8(back.data(), room, wide.data(), size);
  std::wstring again(wide.size(), L'\0');
  Expect("units read again", utf8_to_utf16(again.data(), size, back.data(), bytes), size);
  Expect("text read again", again, wide);
}

void Check(Input input) {
  const std::size_t which = input.Below(4);
  Input sizes = input;
  const std::string_view text = input.Rest();
  std::wstring wide(text.size() / 2, L'\0');
  std::memcpy(wide.data(), text.data(), wide.size() * 2);
  switch (which) {
    case 0:
      return CompareAll<char, char>("isolat1_to_utf8", isolat1_to_utf8, reference::Isolat1ToUtf8,
                                    text, sizes);
    case 1:
      return CompareAll<char, char>("utf8_to_isolat1", utf8_to_isolat1, reference::Utf8ToIsolat1,
                                    text, sizes);
    case 2:
      return CompareAll<char, wchar_t>("utf16_to_utf8", utf16_to_utf8, reference::Utf16ToUtf8, wide,
                                       sizes);
    default:
      CompareAll<wchar_t, char>("utf8_to_utf16", utf8_to_utf16, reference::Utf8ToUtf16, text,
                                sizes);
      CheckRoundTrip(text);
  }
}

const Registration kTarget(
    {.name = "converters",
     .check = Check,
     .seeds = {"Alpha Centauri\3\3",
               "na\xC3\xAFve Stra\xC3\x9F"
               "e\1\1",
               "\xD0\x9A\xD0\xB0\xD1\x82\xD0\xB0\xD0\xBB\xD0\xBE\xD0\xB3\3\3",
               "\xE5\xA4\xA9\xE6\x96\x87 \xF0\x9F\x98\x80\3\3",
               std::string("A\0l\0p\0h\0a\0\2\2", 12)},
     .words = {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xEF\xBF\xBF", "\xF4\x8F\xBF\xBF",
               "\xF4\x90\x80\x80", "\xC0\x80", std::string("\x3D\xD8\0\xDE", 4)}});

}  // namespace
}  // namespace kv::fuzz
