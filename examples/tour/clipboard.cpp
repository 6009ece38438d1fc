#include "examples/tour/clipboard.h"

#include "examples/tour/clipboard_content.h"
#include "examples/tour/format_text.h"
#include "utils/platform/platform.h"

#include <charconv>
#include <optional>
#include <string_view>

namespace tour {
namespace {

constexpr char kDocument[] =
    "<!DOCTYPE html><html><body><p>Der <b>Große Bär</b> steht hoch.</p></body></html>";
constexpr char kIsHeld[] = "is held by another program or cannot be reached";
constexpr char kPlainText[] = "Der Große Bär steht hoch.";

// Other programs hold the clipboard for a moment, mostly because it has just changed. Tries until
// `action` gives true, for half a second at most.
template <typename Action>
bool Insist(Action action) {
  const WaitTime patience(0.5);
  while (!action()) {
    if (patience.IsTimeOver()) return false;
    usleep(10'000.0);
  }
  return true;
}

// Puts back what was on the clipboard, if that is a text or nothing, once it has been replaced. The
// text goes back unit by unit: the library's conversions would change characters beyond U+FFFF.
class ContentKeeper {
 public:
  ContentKeeper() : content_(FindClipboardContent()) {
    if (content_ == ClipboardContent::kText) Insist([&] { return (text_ = ReadTextBlock()); });
  }
  ~ContentKeeper() { PutBack(); }
  ContentKeeper(const ContentKeeper&) = delete;
  ContentKeeper& operator=(const ContentKeeper&) = delete;

  // Why the content must not be replaced; empty when it may.
  std::string Objection() const {
    if (content_ == ClipboardContent::kOther) {
      return "holds something that is no text and could not be put back";
    }
    return content_ == ClipboardContent::kText && !text_ ? kIsHeld : "";
  }

  void HasBeenReplaced() { isReplaced_ = true; }

  // False when it has been replaced and stays so.
  bool PutBack() {
    if (isReplaced_) isReplaced_ = !Insist([&] { return ReplaceContent(text_); });
    return !isReplaced_;
  }

 private:
  ClipboardContent content_;
  std::optional<std::wstring> text_;
  bool isReplaced_ = false;
};

// A label of the header with its digits, and the offset that they give.
struct Offset {
  std::string_view text;  // "StartHTML:00000097"
  std::size_t value = 0;
};

std::optional<Offset> FindOffset(std::string_view block, std::string_view label) {
  const std::size_t start = block.find(label);
  const std::size_t end = block.find("\r\n", start);
  if (start == std::string_view::npos || end == std::string_view::npos) return std::nullopt;
  Offset offset = {.text = block.substr(start, end - start)};
  const char* const digits = offset.text.data() + label.size();
  const auto [stop, error] = std::from_chars(digits, block.data() + end, offset.value);
  if (error != std::errc() || offset.value > block.size()) return std::nullopt;
  return offset;
}

// The two offsets, and what stands between them.
std::string PartText(std::string_view block, std::string_view startLabel, std::string_view endLabel,
                     const char* name, bool isQuoted) {
  const auto start = FindOffset(block, startLabel);
  const auto end = FindOffset(block, endLabel);
  if (!start || !end || start->value > end->value) return "  The header is not that of the tour.\n";
  const std::string_view part = block.substr(start->value, end->value - start->value);
  return "  " + Padded(std::string(start->text), 25) + name +
         (isQuoted ? Quoted(part) : FormatText("%zu bytes", part.size())) + "\n  " +
         std::string(end->text) + "\n";
}

std::string BlockText(std::string_view block) {
  return FormatText("  %zu bytes of HTML for other programs, which read\n", block.size()) +
         PartText(block, "StartHTML:", "EndHTML:", "the document, ", false) +
         PartText(block, "StartFragment:", "EndFragment:", "its fragment, ", true);
}

std::string PlainLine(const std::wstring& textBlock) {
  return "  Beside it stands the plain text " + Quoted(Utf8Text(textBlock.c_str())) + ".\n";
}

std::string LeftAlone(const std::string& reason) {
  return "  Left alone: the clipboard " + reason + ".\n";
}

}  // namespace

std::string ClipboardSectionText() {
  ContentKeeper keeper;
  const std::string objection = keeper.Objection();
  if (!objection.empty()) return LeftAlone(objection);
  if (!Insist([] { return SendHTMLToClipboard(kDocument, kPlainText) != 0; })) {
    return LeftAlone(kIsHeld);
  }
  keeper.HasBeenReplaced();

  std::optional<std::string> block;
  std::optional<std::wstring> plain;
  const bool isRead =
      Insist([&] { return (block = ReadHtmlFormat()) && (plain = ReadTextBlock()); });
  std::string text = isRead ? BlockText(*block) + PlainLine(*plain)
                            : "  It has been put there, but cannot be read back.\n";
  return text + (keeper.PutBack() ? "" : "  What was there before could not be put back.\n");
}

}  // namespace tour
