#include "examples/tour/letters.h"

#include "examples/tour/format_text.h"
#include "examples/tour/installation.h"
#include "examples/tour/section.h"
#include "utils/text/text.h"

namespace tour {
namespace {

std::string WithoutAccents(const std::string& name) {
  std::wstring folded(2 * name.size() + 1, L'\0');
  FromDiacritic(folded.data(), name.c_str(), true);
  folded.resize(folded.find(L'\0'));
  return Utf8Text(folded);
}

std::string WithoutMarkers(const std::string& name) { return ConvertStringWithGreek(name.c_str()); }

// The first column of a data file, what becomes of it, and the second column.
std::string TableText(const char* dataName, const char* head,
                      std::string (*convert)(const std::string& name)) {
  constexpr std::size_t kWidth = 26;
  std::string text = "  " + Padded(dataName, kWidth) + head + "\n";
  for (const Row& row : RequireRows(dataName)) {
    const std::string name = ColumnOf(row, 0);
    text += "  " + Padded(name, kWidth) + Padded(convert(name), kWidth) + ColumnOf(row, 1) + "\n";
  }
  return text;
}

}  // namespace

std::string LettersText() {
  const std::string narrow = "###00 Cen";
  return TableText(kStarsName, "ConvertStringWithGreek", WithoutMarkers) +
         "  A marker takes the three characters behind it: \"" + narrow + "\" is \"" +
         WithoutMarkers(narrow) + "\".\n\n" +
         TableText(kAccentsName, "FromDiacritic", WithoutAccents) +
         "  The capital É is not in the table of accented letters and stays.\n";
}

}  // namespace tour
