// Whole texts between code pages beside the system's conversions, and the mapping of case.
#include <windows.h>

#include <cctype>
#include <cwchar>
#include <string>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

// A text of the system, terminator included; empty for what it refuses. Of a text that ends inside
// a character it may take the terminator for a part of that.
std::wstring Wide(unsigned codePage, const std::string& text) {
  const int size = ::MultiByteToWideChar(codePage, 0, text.c_str(), -1, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  ::MultiByteToWideChar(codePage, 0, text.c_str(), -1, wide.data(), size);
  if (!wide.empty() && wide.back() != L'\0') wide += L'\0';
  return wide;
}

std::string Narrow(unsigned codePage, const std::wstring& wide) {
  if (wide.empty()) return "";
  const int size =
      ::WideCharToMultiByte(codePage, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(codePage, 0, wide.c_str(), -1, text.data(), size, nullptr, nullptr);
  return text;
}

// What stands in a buffer of `room` bytes behind a conversion to `result`, terminator included.
template <typename Convert>
void CheckInPlace(const char* name, const std::string& text, const std::string& result,
                  std::size_t room, Convert convert) {
  std::string content = text + '\0';
  content.resize(std::max(room, content.size()), 'x');
  const GuardedCopy<char> buffer(content);
  const bool fits = !result.empty() && result.size() <= content.size();
  Expect(name, convert(buffer.Get(), static_cast<int>(content.size())), fits);
  if (fits) content.replace(0, result.size(), result);
  Expect("buffer", buffer.Units(), content);
}

void CheckRecoding(const std::string& text, unsigned codePage, const char* language,
                   std::size_t room) {
  const auto current = static_cast<unsigned>(SetCodePage(language));
  const auto toUtf8 = [](int from) {
    return [from](char* buffer, int size) { return Ascii2Utf8(buffer, size, from); };
  };
  CheckInPlace("from a code page", text, Narrow(CP_UTF8, Wide(codePage, text)), room,
               toUtf8(static_cast<int>(codePage)));
  CheckInPlace("from the current code page", text, Narrow(CP_UTF8, Wide(current, text)), room,
               toUtf8(-1));
  CheckInPlace("to the current code page", text, Narrow(current, Wide(CP_UTF8, text)), room,
               Utf82Ascii);
}

void CheckAnsi(const std::string& utf8, std::size_t room) {
  const std::wstring wide = Wide(CP_UTF8, utf8);
  const GuardedCopy<wchar_t> text(wide);
  const std::string result = Narrow(CP_ACP, wide);
  const GuardedRoom<char> out(room);
  const bool fits = result.size() <= room;
  Expect("to ANSI", Unicode2Ascii(text.Get(), out.Get(), static_cast<int>(room)), fits);
  std::string expected(room, GuardedRoom<char>::kFill);
  if (fits) expected.replace(0, result.size(), result);
  Expect("ANSI", out.Units(), expected);
}

void CheckCase(const std::string& text, std::size_t room) {
  std::wstring lower = Wide(CP_UTF8, text);
  std::wstring upper = lower;
  for (wchar_t& unit : lower) unit = unit >= L'A' && unit <= L'Z' ? unit + 32 : unit;
  for (wchar_t& unit : upper) unit = unit >= L'a' && unit <= L'z' ? unit - 32 : unit;
  const auto map = [&](void (*change)(char*, int), const std::wstring& expected) {
    CheckInPlace("case", text, Narrow(CP_UTF8, expected), room, [&](char* buffer, int size) {
      change(buffer, size);
      return static_cast<int>(Narrow(CP_UTF8, expected).size()) <= size;
    });
  };
  map(LowerCase, lower);
  map(UpperCase, upper);
}

// By its measure, and by itself: a second time changes nothing.
void CheckFullUpperCase(const std::string& text) {
  const GuardedText in(text);
  const int size = ConvertToUpperCase(nullptr, in.Get());
  ExpectThat("the size is in bounds", size >= 0 && size <= 9 * static_cast<int>(text.size()));
  const GuardedRoom<char> out(static_cast<std::size_t>(size) + 1);
  Expect("size", ConvertToUpperCase(out.Get(), in.Get()), size);
  Expect("terminator", out.Units().back(), '\0');
  const std::string upper = out.Get();
  Expect("length", upper.size(), static_cast<std::size_t>(size));
  for (const char c : upper) ExpectThat("no small letter is left", c < 'a' || c > 'z');
  std::string again(9 * upper.size() + 1, '\0');
  again.resize(static_cast<std::size_t>(ConvertToUpperCase(again.data(), upper.c_str())));
  Expect("upper case of upper case", again, upper);
}

void Check(Input input) {
  const std::size_t room = input.Below(200);
  const auto codePage =
      input.OneOf<unsigned>({0, 1252, 1251, 932, 936, 949, 1250, 437, 65001, 1, 99999});
  const char* const language = input.OneOf({"en", "ru", "ja"});
  const std::string text = input.Text();
  CheckRecoding(text, codePage, language, room);
  CheckAnsi(text, room);
  CheckCase(text, room);
  CheckFullUpperCase(text);
}

const Registration kTarget(
    {.name = "code_pages",
     .check = Check,
     .seeds = {std::string("Caf\xE9 \x80\0\0\1\x40", 10),
               std::string("\xCA\xE0\xF2\xE0\xEB\xEE\xE3\0\1\2\x40", 11),
               std::string("\x93\x56\x95\xB6\x83\x66\x81\x5B\x83\x5E\0\2\3\x40", 14),
               std::string("stra\xC3\x9F"
                           "e \xC5\x89 \xEF\xAC\x83\0\0\7\x40",
                           18),
               std::string("\xD0\x9A\xD0\xB0\xD1\x82\0\1\7\x40", 10)},
     .words = {"\xC5\x89", "\xEF\xAC\x84", "\xCE\x90", "\xC4\xB0", "\x81\x40", "\xF0\x90\x90\xA8"},
     .maxSize = 200});

}  // namespace
}  // namespace kv::fuzz
