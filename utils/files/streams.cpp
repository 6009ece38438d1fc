#include "utils/files/files.h"

#include "utils/internal/wide_path.h"

#include <share.h>

#include <algorithm>
#include <iterator>
#include <string_view>

// The run-time library hands a mode or a share flag that it does not know to its handler of invalid
// parameters, which may end the process: only those that it knows are passed on.

namespace {

using kv::internal::WidePath;

// Of each set a mode names at most one letter, once. There is no "x" here: this run-time library
// passes over it, and would empty the file that it is meant to protect.
constexpr std::wstring_view kOptions[] = {L"+", L"bt", L"cn", L"RS", L"D", L"N", L"T"};

constexpr std::wstring_view kEncodings[] = {L"utf-8", L"utf-16le", L"unicode"};

constexpr int kShareFlags[] = {_SH_COMPAT, _SH_DENYRW, _SH_DENYWR, _SH_DENYRD, _SH_DENYNO};

// What is left of a mode while it is read. Spaces do not count.
class ModeText {
 public:
  explicit ModeText(std::wstring_view text) : rest_(text) { SkipSpaces(); }

  // The next character, which counts as read; NUL at the end.
  wchar_t Take() {
    if (rest_.empty()) return L'\0';
    const wchar_t c = rest_.front();
    rest_.remove_prefix(1);
    SkipSpaces();
    return c;
  }

  bool TakeWord(std::wstring_view word) {
    if (!rest_.starts_with(word)) return false;
    rest_.remove_prefix(word.size());
    SkipSpaces();
    return true;
  }

  [[nodiscard]] std::wstring_view Rest() const { return rest_; }

 private:
  void SkipSpaces() { rest_.remove_prefix(std::min(rest_.size(), rest_.find_first_not_of(L' '))); }

  std::wstring_view rest_;
};

bool IsEncoding(std::wstring_view text) {
  text = text.substr(0, text.find_last_not_of(L' ') + 1);
  return std::any_of(std::begin(kEncodings), std::end(kEncodings), [text](std::wstring_view known) {
    return std::equal(text.begin(), text.end(), known.begin(), known.end(),
                      [](wchar_t c, wchar_t lower) {
                        return c == lower || (c >= L'A' && c <= L'Z' && c - L'A' + L'a' == lower);
                      });
  });
}

// "r", "w" or "a", options in any order, and then perhaps ", ccs=" and an encoding.
bool IsKnownMode(std::wstring_view text) {
  ModeText mode(text);
  const wchar_t access = mode.Take();
  if (access != L'r' && access != L'w' && access != L'a') return false;
  bool isTaken[std::size(kOptions)] = {};
  for (wchar_t letter = mode.Take(); letter != L'\0'; letter = mode.Take()) {
    if (letter == L',') {
      return mode.TakeWord(L"ccs") && mode.TakeWord(L"=") && IsEncoding(mode.Rest());
    }
    const auto* option = std::find_if(
        std::begin(kOptions), std::end(kOptions),
        [letter](std::wstring_view set) { return set.find(letter) != std::wstring_view::npos; });
    if (option == std::end(kOptions)) return false;
    bool& taken = isTaken[option - std::begin(kOptions)];
    if (taken) return false;
    taken = true;
  }
  return true;
}

bool IsKnownShareFlag(int shareFlag) {
  return std::find(std::begin(kShareFlags), std::end(kShareFlags), shareFlag) !=
         std::end(kShareFlags);
}

// What `open` makes of path and mode in the system's form; null for those that it must not see.
template <typename Open>
FILE* OpenStream(const char* path, const char* mode, Open open) {
  const WidePath widePath(path);
  const WidePath wideMode(mode);  // a mode is converted as a path is
  if (widePath.IsEmpty() || !IsKnownMode(wideMode.View())) return nullptr;
  return open(widePath.Get(), wideMode.Get());
}

}  // namespace

FILE* mm_fopen(const char* path, const char* mode) { return OpenStream(path, mode, ::_wfopen); }

FILE* mm_fsopen(const char* path, const char* mode, int shareFlag) {
  if (!IsKnownShareFlag(shareFlag)) return nullptr;
  return OpenStream(path, mode, [shareFlag](const wchar_t* widePath, const wchar_t* wideMode) {
    return ::_wfsopen(widePath, wideMode, shareFlag);
  });
}
