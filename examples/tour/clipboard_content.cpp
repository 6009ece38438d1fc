#include "examples/tour/clipboard_content.h"

#include <windows.h>

#include <cstring>

namespace tour {
namespace {

class OpenedClipboard {
 public:
  OpenedClipboard() : isOpen_(::OpenClipboard(nullptr) != FALSE) {}
  ~OpenedClipboard() {
    if (isOpen_) ::CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;

  explicit operator bool() const { return isOpen_; }

 private:
  bool isOpen_;
};

// A copy of the block that the clipboard holds for the format.
template <typename Text>
std::optional<Text> ReadBlock(UINT format) {
  using Unit = typename Text::value_type;
  const OpenedClipboard clipboard;
  const HANDLE block = clipboard ? ::GetClipboardData(format) : nullptr;
  const void* const units = block == nullptr ? nullptr : ::GlobalLock(block);
  if (units == nullptr) return std::nullopt;
  const Text copy(static_cast<const Unit*>(units), ::GlobalSize(block) / sizeof(Unit));
  ::GlobalUnlock(block);
  return copy;
}

// Hands a block over to the clipboard, which is open and owns it from then on.
bool PutTextBlock(const std::wstring& text) {
  const std::size_t size = text.size() * sizeof(wchar_t);
  const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, size);
  void* const units = block == nullptr ? nullptr : ::GlobalLock(block);
  if (units == nullptr) return false;
  std::memcpy(units, text.data(), size);
  ::GlobalUnlock(block);
  if (::SetClipboardData(CF_UNICODETEXT, block) != nullptr) return true;
  ::GlobalFree(block);
  return false;
}

}  // namespace

ClipboardContent FindClipboardContent() {
  if (::IsClipboardFormatAvailable(CF_UNICODETEXT)) return ClipboardContent::kText;
  return ::CountClipboardFormats() == 0 ? ClipboardContent::kNothing : ClipboardContent::kOther;
}

std::optional<std::wstring> ReadTextBlock() { return ReadBlock<std::wstring>(CF_UNICODETEXT); }

std::optional<std::string> ReadHtmlFormat() {
  std::optional<std::string> text =
      ReadBlock<std::string>(::RegisterClipboardFormatW(L"HTML Format"));
  if (text) text->resize(std::strlen(text->c_str()));
  return text;
}

bool ReplaceContent(const std::optional<std::wstring>& textBlock) {
  const OpenedClipboard clipboard;
  return clipboard && ::EmptyClipboard() && (!textBlock || PutTextBlock(*textBlock));
}

}  // namespace tour
