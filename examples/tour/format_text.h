// printf into a string.
#ifndef KVUTILS_EXAMPLES_TOUR_FORMAT_TEXT_H_
#define KVUTILS_EXAMPLES_TOUR_FORMAT_TEXT_H_

#include <string>

namespace tour {

[[gnu::format(gnu_printf, 1, 2)]] std::string FormatText(const char* format, ...);

// `text` and spaces up to `width` characters; the characters of UTF-8 text count, not its bytes.
std::string Padded(std::string text, std::size_t width);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_FORMAT_TEXT_H_
