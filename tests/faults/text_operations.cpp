// The functions of texts that allocate.
#include <sstream>
#include <string>
#include <vector>

#include "tests/faults/operations.h"
#include "utils/platform/platform.h"
#include "utils/text/text.h"

namespace kv::test {
namespace {

void Nothing() {}

// Texts that need room of their own, wherever short ones do not.
const std::string kLong(700, 'a');

template <typename Text>
std::string Joined(const std::vector<Text>& texts) {
  std::ostringstream told;
  for (const Text& text : texts) told << text.size() << ',';
  return told.str();
}

std::string Split() {
  std::vector<std::string> tokens = {"old"};
  std::vector<std::string> more = {"old"};
  std::vector<std::string> fields = {"old"};
  std::vector<std::wstring> wide;
  std::ostringstream told;
  const std::string text = kLong + ";b;;" + kLong;
  told << GetTokens(tokens, text, ';') << Joined(tokens);
  told << GetTokens(more, text.c_str(), ";b") << Joined(more);
  told << GetTokens(wide, std::wstring(50, L'w') + L"\\" + std::wstring(60, L'v'), '\\')
       << Joined(wide);
  told << GetSubStrings(fields, text, ';') << Joined(fields);
  told << ParseString(kLong).size();
  return told.str();
}

std::string Replace() {
  std::string text = kLong;
  std::ostringstream told;
  told << findAndReplace(text, "aa", "bcd") << ' ' << text.size();
  char buffer[64] = "one two";
  told << ' ' << ReplaceSubstring(buffer, sizeof buffer, "o", "000") << ' ' << buffer;
  return told.str();
}

std::string Convert() {
  std::ostringstream told;
  told << Ascii2Unicode(kLong.c_str(), true).size() << ' ';
  std::string upper(2048, '\0');
  told << ConvertToUpperCase(upper.data(), kLong.c_str()) << (upper[0] == 'A' ? "A" : "") << ' ';
  std::string mapped = kLong;
  UpperCase(mapped.data(), static_cast<int>(mapped.size() + 1));
  told << mapped[0] << ' ';
  std::string narrow(2048, '\0');
  kLong.copy(narrow.data(), kLong.size());
  told << Ascii2Utf8(narrow.data(), 2048, 1252);
  kLong.copy(narrow.data(), kLong.size());
  told << Utf82Ascii(narrow.data(), 2048);
  std::wstring plain(2048, L'\0');
  told << FromDiacritic(plain.data(), kLong.c_str(), true);
  told << ' ' << ConvertStringWithGreek((kLong + "###00 Cen").c_str()).size();
  return told.str();
}

std::string Url() {
  std::string scheme;
  std::string host;
  std::string path;
  std::string query;
  extractURLParts(("http://" + kLong + "/" + kLong + "?" + kLong).c_str(), &scheme, &host, &path,
                  &query);
  std::ostringstream told;
  told << scheme << host.size() << ' ' << path.size() << ' ' << query.size();
  return told.str();
}

std::string Compare() {
  SetCodePage("de");
  std::ostringstream told;
  told << CompareStrings(kLong.c_str(), (kLong + "b").c_str(), false)
       << CompareNoCaseStrings(kLong.c_str(), kLong.c_str())
       << CompareStringsRange(kLong.c_str(), "b", 300)
       << CompareStringsRangeExt(kLong.c_str(), kLong.c_str(), true, true)
       << CompareAsterNameWithNumber(("(1) " + kLong).c_str(), kLong.c_str())
       << CompareStringWithNumber("M 31", "m 4");
  return told.str();
}

std::string ShareParameters() {
  IntParametersSender sender;
  sender.SetParamByName(7, kLong.c_str());
  sender.SetParamByName(8, "b");
  IntParametersSender copy(sender);
  int value = 0;
  std::ostringstream told;
  told << copy.GetParamByName(&value, kLong.c_str()) << value << ' '
       << GetPanelLdfFileNameWD(kLong.c_str()).size();
  return told.str();
}

}  // namespace

std::vector<Operation> TextOperations() {
  return {
      {"GetTokens", Nothing, Split, "1700,1,700,1700,700,150,60,43,700,1,0,700", "bad_alloc"},
      {"findAndReplace", Nothing, Replace, "350 1050 11 000ne tw000", "bad_alloc"},
      {"ConvertToUpperCase", Nothing, Convert, "700 700A A 101 706", "700 0 A 101 706"},
      {"extractURLParts", Nothing, Url, "http700 0 1402", "bad_alloc"},
      {"CompareNoCaseStrings", Nothing, Compare, "-10-10-127", "bad_alloc"},
      {"IntParametersSender", Nothing, ShareParameters, "17 700", "bad_alloc"},
  };
}

}  // namespace kv::test
