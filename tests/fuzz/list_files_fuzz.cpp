// What is read whole out of the installation's text files: the folder lists, the add-on's list, the
// columns of tables, texts in UTF-8.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "tests/fuzz/support/plain_text_file.h"
#include "tests/fuzz/support/target.h"
#include "tests/reference/encoding.h"
#include "tests/reference/resolver.h"
#include "tests/support/files.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

namespace kv::fuzz {
namespace {

using Texts = std::vector<std::string>;

constexpr int kListLine = 256;

void WriteAnew(const std::string& place, std::string_view content) {
  test::WriteBytes(place, content);
  KelvarisPath::ClearFileNamesStorage();
}

Texts Block(PlainTextFile& file) {
  Texts lines;
  for (std::string line; file.Readln(line, kListLine) >= 0;) lines.push_back(line);
  return lines;
}

void CheckFolderLists(Input input) {
  static const std::string kPlace = "media\\fileutils.ini";
  WriteAnew(kPlace, input.Rest());
  KelvarisPath::Done();
  KelvarisPath::ms_IsInit = false;
  const KelvarisPath resolver;
  PlainTextFile file(kPlace, {});
  Expect("medium folders", KelvarisPath::ms_CDFolders, Block(file));
  Expect("themes", KelvarisPath::ms_ThemePaths, Block(file));
  Expect("writable paths", KelvarisPath::ms_WritablePaths, Block(file));
}

class OpenResolver : public KelvarisPath {
 public:
  using KelvarisPath::CheckFeaturePackFile;
};

void CheckAddOnList(Input input) {
  static const std::string kPlace = "feature_pack\\feature_pack_filelist.txt";
  OpenResolver resolver;
  WriteAnew(kPlace, input.Rest());
  KelvarisPath::Done();
  KelvarisPath::sFeaturePackFolder.clear();
  char place[260];
  resolver.CheckFeaturePackFile(place, "none");

  PlainTextFile file(kPlace, {});
  std::string folder;
  Texts names;
  if (file.Readln(folder, kListLine) <= 0) folder.clear();
  for (std::string line; !folder.empty() && file.Readln(line, kListLine) > 0;) {
    names.push_back(reference::Resolver::LowerCase(reference::Resolver::WithBackslashes(line)));
  }
  Expect("folder", KelvarisPath::sFeaturePackFolder, folder);
  Expect("names", KelvarisPath::sFeaturePackFileNames, names);
  if (names.empty()) return;
  const bool fits = folder.size() + names[0].size() < sizeof place;
  Expect("listed", resolver.CheckFeaturePackFile(place, names[0].c_str()), true);
  Expect("place", std::string(place), fits ? folder + names[0] : "");
}

Texts Fields(const std::string& line) {
  Texts fields = {""};
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] != '\t') {
      fields.back() += line[i];
    } else if (i == 0 || line[i - 1] != '\t') {
      fields.emplace_back();
    }
  }
  if (fields.back().empty()) fields.pop_back();
  return fields;
}

void CheckTable(Input input) {
  static const std::string kPlace = "table.txt";
  const int column = input.Between(-1, 6);
  WriteAnew(kPlace, input.Rest());
  Texts expected = {"before"};
  PlainTextFile file(kPlace, {});
  for (std::string line; file.Readln(line, 512) > 0;) {
    const Texts fields = Fields(line);
    if (column >= 0 && static_cast<std::size_t>(column) < fields.size()) {
      expected.push_back(fields[static_cast<std::size_t>(column)]);
    }
  }
  Texts out = {"before"};
  Expect("whether there is a field", ReadTabSeparatedColumn(out, "table.txt", column), true);
  Expect("column", out, expected);
}

void CheckUtf8(Input input) {
  static const std::string kPlace = "text.txt";
  const std::string content(input.Rest());
  WriteAnew(kPlace, content);
  std::string text = "before";
  int size = 0;
  const bool isText =
      !content.empty() && content.find('\0') == std::string::npos &&
      reference::Utf8ToUtf16(nullptr, size, content.data(), static_cast<int>(content.size())) != -2;
  Expect("whether a text", loadUTF8StringFromFile(text, kPlace.c_str()), isText);
  Expect("text", text, isText ? "before" + content : "before");
  const std::unique_ptr<char[]> bytes(GetKvFileContent("text.txt"));
  ExpectThat("the content is there", bytes != nullptr);
  Expect("content", std::string_view(bytes.get(), content.size() + 1), content + '\0');
}

constexpr int kCount = 500;

const Registration kFolderLists(
    {.name = "folder_lists",
     .check = CheckFolderLists,
     .seeds = {"! medium folders\ncatalogs\nmedia\n}\nthemes\\dark\n}\nworkspaces\n}\n",
               "\xEF\xBB\xBF"
               "a\r\n\r\n }x\nb\n}\n",
               "}}\n}\n}\nbehind"},
     .words = {"}\n", "! ", "\r\n"},
     .count = kCount});

const Registration kAddOnList(
    {.name = "add_on_list",
     .check = CheckAddOnList,
     .seeds = {"feature_pack\\content\\\ncatalogs:Stars:Hip.bin\nmedia/find/Stars.kwd\n}\n",
               "a\n\nB:c\n"},
     .words = {"}\n", "! ", "\r\n"},
     .count = kCount});

const Registration kTable({.name = "tab_columns",
                           .check = CheckTable,
                           .seeds = {"Sirius\t-1.46\tA1V\nCanopus\t\t-0.74\n!\tx\n\n}\nend\2",
                                     "\ta\tb\t\n  c\t d \t\r\n\1"},
                           .words = {"\t", "\t\t", "}\n", "! "},
                           .count = kCount});

const Registration kUtf8(
    {.name = "utf8_file",
     .check = CheckUtf8,
     .seeds = {"\xEF\xBB\xBF"
               "Kelvaris: \xD0\x97\xD0\xB2\xD0\xB5\xD0\xB7\xD0\xB4\xD1\x8B \xF0\x9F\x98\x80\r\n"},
     .count = kCount});

}  // namespace
}  // namespace kv::fuzz
