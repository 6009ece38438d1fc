// An HTML document on the clipboard.
#ifndef KVUTILS_EXAMPLES_TOUR_CLIPBOARD_H_
#define KVUTILS_EXAMPLES_TOUR_CLIPBOARD_H_

#include <string>

namespace tour {

// A small document as other programs find it there, by the four offsets of its header. The text
// that was on the clipboard is put back. The clipboard is left alone, and that is said, when it
// holds what cannot be put back, and when another program holds it for half a second.
std::string ClipboardSectionText();

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_CLIPBOARD_H_
