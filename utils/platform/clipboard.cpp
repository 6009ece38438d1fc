#include "utils/platform/platform.h"

#include "utils/internal/win32.h"
#include "utils/text/counted_output.h"
#include "utils/text/text.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string_view>

namespace {

using kv::internal::kMalformed;
using kv::internal::UniqueResource;

constexpr int kFailed = 0;
constexpr int kNotOffered = -1;

// What stands in front of an HTML document; offsets count from its first byte.
constexpr std::string_view kHtmlHeader =
    "Version:0.9\r\nStartHTML:00000000\r\nEndHTML:00000000\r\n"
    "StartFragment:00000000\r\nEndFragment:00000000\r\n";
static_assert(kHtmlHeader.size() == 97);
using HtmlHeader = std::array<char, kHtmlHeader.size()>;
constexpr std::size_t kOffsetDigits = 8;
constexpr std::size_t kLargestOffset = 99999999;
constexpr std::size_t kHtmlTail = 4;  // zeros behind the document

UINT htmlFormat = 0;  // the format's number, 0 until its first use; unsynchronised

// The clipboard, open while this lives; without an owner window.
class OpenedClipboard {
 public:
  OpenedClipboard() : isOpen_(::OpenClipboard(nullptr) != FALSE) {}
  ~OpenedClipboard() {
    if (isOpen_) ::CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;

  [[nodiscard]] explicit operator bool() const { return isOpen_; }

  // What closing gives: not 0 when all went well.
  [[nodiscard]] int Close() {
    isOpen_ = false;
    return ::CloseClipboard();
  }

 private:
  bool isOpen_;
};

struct GlobalMemoryTraits {
  using Handle = HGLOBAL;
  static Handle Invalid() { return nullptr; }
  static void Close(Handle handle) { ::GlobalFree(handle); }
};
using UniqueGlobalMemory = UniqueResource<GlobalMemoryTraits>;

// The bytes of a global block, in their place while this lives; null for a block without any.
class LockedMemory {
 public:
  explicit LockedMemory(HGLOBAL block) : block_(block), bytes_(::GlobalLock(block)) {}
  ~LockedMemory() {
    if (bytes_ != nullptr) ::GlobalUnlock(block_);
  }
  LockedMemory(const LockedMemory&) = delete;
  LockedMemory& operator=(const LockedMemory&) = delete;

  template <typename Unit>
  [[nodiscard]] Unit* As() const {
    return static_cast<Unit*>(bytes_);
  }

 private:
  HGLOBAL block_;
  void* bytes_;
};

// Puts a new block of zeros on the open clipboard once fill(units) has been called. The clipboard
// owns the block from then on; one that it refuses is freed.
template <typename Unit, typename Fill>
void PutBlock(UINT format, std::size_t units, Fill fill) {
  UniqueGlobalMemory block(::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, units * sizeof(Unit)));
  if (!block) return;
  {
    const LockedMemory memory(block.Get());
    if (memory.As<Unit>() == nullptr) return;
    fill(memory.As<Unit>());
  }
  if (::SetClipboardData(format, block.Get()) != nullptr) static_cast<void>(block.Release());
}

// The length of the UTF-16 form of a text; nothing for a malformed one, and for one longer than the
// converters can measure.
std::optional<int> Utf16Length(std::string_view utf8) {
  if (utf8.size() > INT_MAX) return std::nullopt;
  int length = 0;
  if (utf8_to_utf16(nullptr, length, utf8.data(), static_cast<int>(utf8.size())) == kMalformed) {
    return std::nullopt;
  }
  return length;
}

// Puts a text of the given length in UTF-16, which is its terminator shorter than the block.
void PutUnicodeText(std::string_view utf8, int length) {
  const std::size_t units = static_cast<std::size_t>(length) + 1;
  PutBlock<wchar_t>(CF_UNICODETEXT, units, [&](wchar_t* out) {
    utf8_to_utf16(out, length, utf8.data(), static_cast<int>(utf8.size()));
  });
}

// The size that a buffer for the clipboard's text must have; fills one that is not null.
int ReadUnicodeText(char* buffer) {
  HANDLE block = ::GetClipboardData(CF_UNICODETEXT);
  const SIZE_T bytes = block == nullptr ? 0 : ::GlobalSize(block);
  // Callers rely on the whole block being text, its terminator and all that follows it included.
  const SIZE_T units = bytes / sizeof(wchar_t);
  if (bytes == 0 || units > INT_MAX) return kFailed;
  const LockedMemory memory(block);
  const auto* const utf16 = memory.As<const wchar_t>();
  if (utf16 == nullptr) return kFailed;

  const int inLength = static_cast<int>(units);
  int length = 0;
  if (utf16_to_utf8(nullptr, length, utf16, inLength) == kMalformed) return kFailed;
  if (length == INT_MAX) return kFailed;  // or more: no room for the terminator
  if (buffer != nullptr) {
    utf16_to_utf8(buffer, length, utf16, inLength);
    buffer[length] = '\0';
  }
  return length + 1;
}

// Writes a place in the document over the zeros behind a label. Zeros stay where there is no such
// place and where eight digits cannot hold the offset.
void WriteOffset(HtmlHeader& header, std::string_view label, std::size_t place) {
  if (place > kLargestOffset - kHtmlHeader.size()) return;
  char digits[kOffsetDigits + 1];
  std::snprintf(digits, sizeof digits, "%08u", static_cast<unsigned>(kHtmlHeader.size() + place));
  const std::size_t zeros = kHtmlHeader.find(label) + label.size();
  std::copy_n(digits, kOffsetDigits, header.data() + zeros);
}

// The place behind the first ">" that follows the first "<body".
std::size_t FragmentStart(std::string_view html) {
  const std::size_t tag = html.find("<body");
  if (tag == std::string_view::npos) return tag;
  const std::size_t end = html.find('>', tag);
  return end == std::string_view::npos ? end : end + 1;
}

HtmlHeader MakeHtmlHeader(std::string_view html) {
  HtmlHeader header;
  kHtmlHeader.copy(header.data(), header.size());
  WriteOffset(header, "StartHTML:", html.find("<!DOCTYPE html>"));
  WriteOffset(header, "EndHTML:", html.size());
  WriteOffset(header, "StartFragment:", FragmentStart(html));
  WriteOffset(header, "EndFragment:", html.find("</body>"));
  return header;
}

void PutHtml(std::string_view html) {
  if (htmlFormat == 0) htmlFormat = ::RegisterClipboardFormatA("HTML Format");
  const HtmlHeader header = MakeHtmlHeader(html);
  const std::size_t size = header.size() + html.size() + kHtmlTail;
  PutBlock<char>(htmlFormat, size, [&](char* out) {
    std::copy(header.begin(), header.end(), out);
    html.copy(out + header.size(), html.size());
  });
}

}  // namespace

int SendTextToClipboard(const char* text) {
  if (text == nullptr) return kFailed;
  OpenedClipboard clipboard;
  if (!clipboard) return kFailed;
  const std::string_view utf8(text);
  // Callers rely on a malformed text leaving the clipboard's content alone.
  if (const std::optional<int> length = Utf16Length(utf8)) {
    ::EmptyClipboard();
    PutUnicodeText(utf8, *length);
  }
  return clipboard.Close();
}

int GetTextFromClipboard(char* buffer) {
  const OpenedClipboard clipboard;
  return clipboard ? ReadUnicodeText(buffer) : kFailed;
}

int SendHTMLToClipboard(const char* html, const char* plainText) {
  if (html == nullptr) return kFailed;
  OpenedClipboard clipboard;
  if (!clipboard) return kFailed;
  ::EmptyClipboard();
  PutHtml(html);
  if (plainText != nullptr) {
    const std::string_view utf8(plainText);
    if (const std::optional<int> length = Utf16Length(utf8)) PutUnicodeText(utf8, *length);
  }
  return clipboard.Close();
}

int GetHTMLFromClipboard() { return kNotOffered; }
