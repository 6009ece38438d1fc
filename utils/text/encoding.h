#ifndef KVUTILS_UTILS_TEXT_ENCODING_H_
#define KVUTILS_UTILS_TEXT_ENCODING_H_

#include "utils/text/counted_output.h"

#include <cstddef>

namespace kv::internal {

// The conversion of utf8_to_utf16: puts the units of the `size` bytes at `in`. False at the first
// fault; the units before it are then in `out`.
bool PutUtf16(CountedOutput<wchar_t>& out, const char* in, std::size_t size);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_ENCODING_H_
