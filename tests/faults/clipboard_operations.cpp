// The clipboard, which is one for all processes.
#include <sstream>
#include <string>
#include <vector>

#include "tests/faults/operations.h"
#include "utils/platform/platform.h"

namespace kv::test {
namespace {

void ClearClipboard() { SendTextToClipboard("before"); }

std::string TextThere() {
  const int size = GetTextFromClipboard(nullptr);
  if (size <= 0) return "none";
  std::string text(static_cast<std::size_t>(size), '\0');
  if (GetTextFromClipboard(text.data()) == 0) return "none";
  return text.c_str();
}

std::string SendText() {
  std::ostringstream told;
  told << (SendTextToClipboard("text") != 0) << ' ' << TextThere();
  return told.str();
}

std::string SendHtml() {
  std::ostringstream told;
  told << (SendHTMLToClipboard("<!DOCTYPE html><body>b</body>", "plain") != 0) << ' '
       << TextThere();
  return told.str();
}

}  // namespace

std::vector<Operation> ClipboardOperations() {
  return {
      {"SendTextToClipboard", ClearClipboard, SendText, "1 text", "[01] (text|before|none|)"},
      {"SendHTMLToClipboard", ClearClipboard, SendHtml, "1 plain", "[01] (plain|before|none|)"},
  };
}

}  // namespace kv::test
