#include "examples/tour/services.h"

#include "examples/tour/archive.h"
#include "examples/tour/clipboard.h"
#include "examples/tour/console.h"
#include "examples/tour/downloads.h"
#include "examples/tour/frames.h"
#include "examples/tour/letters.h"
#include "examples/tour/name_order.h"
#include "examples/tour/section.h"
#include "examples/tour/short_path.h"
#include "examples/tour/updates.h"
#include "examples/tour/workshop.h"
#include "utils/files/files.h"

#include <cstdio>

namespace tour {
namespace {

template <typename MakeText>
bool PrintSection(const char* title, MakeText makeText) {
  PrintTitle(title);
  try {
    std::fputs(makeText().c_str(), stdout);
    return true;
  } catch (const Failure& failure) {
    Complain(failure.what());
  } catch (const MException&) {
    Complain("stopped by the error above");  // its message was printed when it was made
  }
  return false;
}

// The sections that write files.
bool PrintFileSections() {
  try {
    Workshop workshop;
    const bool isNew =
        PrintSection("A download, checked by its CRC-32", [&] { return DownloadText(workshop); });
    const bool isUpdated = PrintSection("An update, installed over the file that it replaces",
                                        [&] { return UpdateText(workshop); });
    const bool isUnpacked = PrintSection("An archive, unpacked", [&] {
      return ArchiveText(workshop, PlainPath(workshop.Folder()));
    });
    const bool isRemoved = workshop.Remove();
    if (!isRemoved) Complain(workshop.Folder() + " cannot be removed");
    return isNew && isUpdated && isUnpacked && isRemoved;
  } catch (const Failure& failure) {
    Complain(failure.what());
    return false;
  }
}

}  // namespace

bool PrintServices() {
  const bool filesAreShown = PrintFileSections();
  const bool orderIsShown = PrintSection("Names in natural order", NameOrderText);
  const bool lettersAreShown = PrintSection("Greek letters and accents", LettersText);
  PrintSection("The clock of an animation", FramesText);
  PrintSection("HTML on the clipboard", ClipboardSectionText);
  return filesAreShown && orderIsShown && lettersAreShown;
}

}  // namespace tour
