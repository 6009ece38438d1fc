// Texts that are put together for one line of a terminal.
#ifndef KVUTILS_EXAMPLES_TOUR_FORMAT_TEXT_H_
#define KVUTILS_EXAMPLES_TOUR_FORMAT_TEXT_H_

#include <string>
#include <string_view>

namespace tour {

// printf into a string, cut at 511 bytes.
[[gnu::format(gnu_printf, 1, 2)]] std::string FormatText(const char* format, ...);

// `text` and spaces up to `width` characters; the characters of UTF-8 text count, not its bytes.
std::string Padded(std::string text, std::size_t width);

// UTF-16 as UTF-8, by the library's conversion: empty when it is malformed.
std::string Utf8Text(const std::wstring& text);

// A text of unknown origin in quotation marks: its first 40 characters, "..." for the others, and a
// "?" for each control character and for each byte that is not UTF-8.
std::string Quoted(std::string_view text);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_FORMAT_TEXT_H_
