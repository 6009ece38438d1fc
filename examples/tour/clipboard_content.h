// The clipboard as other programs see it: by plain calls of the system.
#ifndef KVUTILS_EXAMPLES_TOUR_CLIPBOARD_CONTENT_H_
#define KVUTILS_EXAMPLES_TOUR_CLIPBOARD_CONTENT_H_

#include <optional>
#include <string>

namespace tour {

// What kind of content there is. A program that holds the clipboard does not hinder the answer.
enum class ClipboardContent { kNothing, kText, kOther };
ClipboardContent FindClipboardContent();

// The whole block of the plain text, its terminator included, and the bytes of "HTML Format" before
// their first NUL. Nothing when there is no such format, and when another program holds the
// clipboard.
std::optional<std::wstring> ReadTextBlock();
std::optional<std::string> ReadHtmlFormat();

// Makes the block, as ReadTextBlock gives it, the only content, or leaves none. False when another
// program holds the clipboard, or the system refuses.
bool ReplaceContent(const std::optional<std::wstring>& textBlock);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_CLIPBOARD_CONTENT_H_
