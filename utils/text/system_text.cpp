#include "utils/text/system_text.h"

#include "utils/internal/win32.h"

namespace kv::internal {

SystemText::SystemText(unsigned codePage, const char* text, int size) {
  short_[0] = L'\0';
  if (text == nullptr) return;
  isValid_ = true;
  if (size == 0) return;
  size_ = ::MultiByteToWideChar(codePage, 0, text, size, short_, kShortSize);
  if (size_ == 0) {
    const int needed = ::MultiByteToWideChar(codePage, 0, text, size, nullptr, 0);
    if (needed > kShortSize) {
      long_.resize(static_cast<std::size_t>(needed) + 1);
      size_ = ::MultiByteToWideChar(codePage, 0, text, size, long_.data(), needed);
    }
  }
  isValid_ = size_ > 0;
  Get()[size_] = L'\0';
}

bool NarrowSystemText(unsigned codePage, const wchar_t* text, char* out, int outSize) {
  const int needed = ::WideCharToMultiByte(codePage, 0, text, -1, nullptr, 0, nullptr, nullptr);
  if (needed <= 0 || needed > outSize) return false;
  return ::WideCharToMultiByte(codePage, 0, text, -1, out, outSize, nullptr, nullptr) > 0;
}

}  // namespace kv::internal
