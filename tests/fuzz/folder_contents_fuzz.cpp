// The search of folders by a mask, and the removal of data by descriptors, on one tree of files.
// Nothing is deleted: what would be is noted.
#include <windows.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <vector>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "tests/support/files.h"
#include "tests/support/import_patch.h"
#include "utils/paths/paths.h"

namespace kv::fuzz {
namespace {

using test::ImportPatch;
using Texts = std::vector<std::string>;

std::string Lower(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return text;
}

const Texts kFiles = {"a.bin",   "B.BIN",      "c.bin.bak", "none",  "d.txt",
                      ".hidden", "sub\\e.bin", "sub\\f",    "g.Txt", "two.dots.bin"};

void CheckMask(Input input) {
  static const bool isMade = [] {
    for (const std::string& file : kFiles) test::WriteBytes("searched\\" + file, "x");
    return true;
  }();
  const bool isRecursive = input.Flag() && isMade;
  const std::string mask = input.Text();
  const GuardedText guarded(mask);
  FindFiles found("searched", "target", guarded.Get());
  found.Run(isRecursive);
  std::set<std::string> files;
  for (unsigned i = 0; i < found.GetNumberFiles(); ++i) {
    const std::string path = found.GetSourceFile(i);
    Expect("target", std::string(found.GetTargetFile(i)), "target" + path.substr(8));
    files.insert(path);
  }
  const auto extension = [](const std::string& name) {
    const std::size_t dot = name.find('.');
    return Lower(dot == std::string::npos ? "" : name.substr(dot + 1));
  };
  const std::size_t dot = mask.find('.');
  const std::string wanted = Lower(dot == std::string::npos ? mask : mask.substr(dot + 1));
  std::set<std::string> expected;
  for (const std::string& file : kFiles) {
    const std::size_t separator = file.rfind('\\');
    if (separator != std::string::npos && !isRecursive) continue;
    const std::string name = separator == std::string::npos ? file : file.substr(separator + 1);
    if (mask == "*.*" || extension(name) == wanted) expected.insert("searched\\" + file);
  }
  if (mask == "*.*" && !isRecursive) expected.insert("searched\\sub");
  Expect("files", Texts(files.begin(), files.end()), Texts(expected.begin(), expected.end()));
}

// What would be deleted, as the calls name it.
Texts g_deleted;

int WINAPI NoteTree(SHFILEOPSTRUCTW* operation) {
  g_deleted.push_back("tree " + test::Narrow(operation->pFrom));
  return 0;
}
BOOL WINAPI NoteFile(const wchar_t* path) {
  g_deleted.push_back("file " + test::Narrow(path));
  return TRUE;
}

// The texts between characters of a set, none of them empty.
Texts Split(const std::string& text, char delim) {
  Texts parts;
  std::string part;
  for (const char c : text + delim) {
    if (c != delim) {
      part += c;
    } else if (!part.empty()) {
      parts.push_back(std::exchange(part, ""));
    }
  }
  return parts;
}

const Texts kData = {"user.wsi",           "settings.ini",     "catalogs\\comets\\a.bin",
                     "media\\find\\a.kwd", "en\\settings.ini", "en\\media\\find\\b.kwd",
                     "de\\settings.ini",   "outside.txt"};
const Texts kFolders = {"catalogs", "catalogs\\comets", "media", "media\\find", ".\\"};

void PrepareData() {
  static const KelvarisPath resolver;
  static const bool isMade = [] {
    for (const std::string& file : kData) {
      test::WriteBytes(KelvarisPath::ms_WritablePath + file, "x");
    }
    test::WriteBytes("media\\supported_languages.ini", "en\nde\nfr\n..\n.\n");
    return true;
  }();
  static const ImportPatch tree("SHFileOperationW", &NoteTree);
  static const ImportPatch file("DeleteFileW", &NoteFile);
  if (isMade) g_deleted.clear();
}

// Whether a path that is to be deleted lies where things may be deleted.
bool IsInside(const std::string& call) {
  wchar_t full[4096];
  ::GetFullPathNameW(test::Widen(call.substr(5)).c_str(), 4096, full, nullptr);
  const std::string inside = Lower(test::Narrow(full)) + "\\";
  const std::string folder = Lower(KelvarisPath::ms_WritablePath);
  return inside.starts_with(folder);
}

// What a descriptor of plain names, behind no other, deletes in one folder.
void Note(Texts& deleted, const std::string& root, const Texts& fields) {
  const bool isOwn = fields.size() < 2 || fields[1] == ".\\";
  const std::string folder = root + (isOwn ? "" : fields[1]);
  if (fields.size() < 4) {
    if (!test::FolderExists(folder)) return;
    deleted.push_back("tree " +
                      (folder.ends_with('\\') ? folder.substr(0, folder.size() - 1) : folder));
    return;
  }
  const std::string path = root + fields[1] + (fields[1].ends_with('\\') ? "" : "\\");
  if (!test::FolderExists(path)) return;
  for (const std::string& name : test::ListTree(path)) {
    if (name.find('\\') != std::string::npos && !name.ends_with('\\')) continue;
    const std::string bare = name.ends_with('\\') ? name.substr(0, name.size() - 1) : name;
    for (const std::string& listed : Split(fields[3], ',')) {
      const bool isNamed = Lower(listed) == Lower(bare);
      if (isNamed == (fields[2] == "delete")) deleted.push_back("file " + path + bare);
    }
  }
}

// Whether the model below knows all words of a descriptor.
bool IsPlain(const Texts& fields) {
  static const Texts kRoots = {"all", "base", "languages"};
  static const Texts kModes = {"delete", "not_delete"};
  const auto isOneOf = [](const Texts& words, const std::string& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
  };
  if (fields.empty() || !isOneOf(kRoots, fields[0])) return false;
  if (fields.size() > 1 && !isOneOf(kFolders, fields[1])) return false;
  if (fields.size() > 2 && !isOneOf(kModes, fields[2])) return false;
  return fields.size() < 4 || std::all_of(fields[3].begin(), fields[3].end(), [](char c) {
           return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '.' || c == ',';
         });
}

void CheckRemoval(Input input) {
  PrepareData();
  const std::string first = input.Text();
  const std::string second = input.Text();
  const GuardedText guardedFirst(first);
  const GuardedText guardedSecond(second);
  const char* const descriptors[] = {guardedFirst.Get(), guardedSecond.Get()};
  KvFoldersRemover(descriptors, 2).Run();
  for (const std::string& call : g_deleted) ExpectThat(call.c_str(), IsInside(call));

  const Texts fields = Split(first, ';');
  if (!IsPlain(fields)) return;
  g_deleted.clear();
  KvFoldersRemover(descriptors, 1).Run();
  Texts expected;
  const std::string writable = KelvarisPath::ms_WritablePath;
  if (fields.size() != 3) {
    if (fields[0] != "base") {
      for (const char* const language : {"en\\", "de\\"})
        Note(expected, writable + language, fields);
    }
    if (fields[0] != "languages") Note(expected, writable, fields);
  }
  std::sort(expected.begin(), expected.end());
  std::sort(g_deleted.begin(), g_deleted.end());
  for (std::string& call : g_deleted) {
    while (call.ends_with('\\')) call.pop_back();
  }
  Expect("deleted", g_deleted, expected);
}

const Registration kMasks({.name = "file_masks",
                           .check = CheckMask,
                           .seeds = {"*.bin\1", "*.*", "*.*\1", "bin", "*.", "x.BIN.bak", ""},
                           .words = {"*", "*.", ".txt", "bin"},
                           .maxSize = 300,
                           .count = 500});

const Registration kRemoval(
    {.name = "removal",
     .check = CheckRemoval,
     .seeds = {std::string("all;catalogs\\comets\0base;media\\find;not_delete;a.kwd", 51),
               "base;.\\;delete;user.wsi,settings.ini", "languages;.\\",
               "all;media\\find;not_delete;b.kwd", "all;..\\..\\x;delete;a",
               "languages;media\\find;delete;B.KWD"},
     .words = {"..\\", ".\\", "all;", "base;", "languages;", "delete;", "not_delete;", ";", ",",
               "settings.ini", "catalogs"},
     .maxSize = 300,
     .count = 500});

}  // namespace
}  // namespace kv::fuzz
