// The defining form of KelvarisPath::GetPath: four passes over two folders, one question at a time.
#ifndef KVUTILS_TESTS_REFERENCE_RESOLVER_H_
#define KVUTILS_TESTS_REFERENCE_RESOLVER_H_

#include <cctype>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/reference/identifiers.h"

namespace kv::reference {

// What the resolver goes by, and the two things that it asks of the file system. Data names are of
// at most 519 bytes, the folders short enough for a text to hold them and a name.
struct Resolver {
  static constexpr std::size_t kPathSize = 260;
  static constexpr std::size_t kTextSize = 1024;
  static constexpr char kListName[] = "feature_pack:feature_pack_filelist.txt";

  std::string workFolder;
  std::string writableFolder;
  std::string languageFolder;
  std::string addOnFolder;
  std::vector<std::string> addOnNames;
  std::map<int, std::string> remembered;
  std::function<bool(const char* path)> exists;
  // The significant lines of a list file up to its end mark; none when it cannot be opened.
  std::function<std::vector<std::string>(const char* path)> readList;

  static bool IsSeparator(char c) { return c == ':' || c == '\\' || c == '/'; }

  static const char* SkipSeparator(const char* name) { return name + (IsSeparator(*name) ? 1 : 0); }

  static void TurnSeparators(char* text) {
    for (; *text != '\0'; ++text) {
      if (IsSeparator(*text)) *text = '\\';
    }
  }

  static void ToLower(char* text) {
    for (; *text != '\0'; ++text)
      *text = static_cast<char>(std::tolower(static_cast<unsigned char>(*text)));
  }

  // The same steps for those who compose paths.
  static std::string WithoutLeadingSeparator(const std::string& name) {
    return SkipSeparator(name.c_str());
  }

  static std::string WithBackslashes(std::string text) {
    TurnSeparators(text.data());
    return text;
  }

  static std::string LowerCase(std::string text) {
    ToLower(text.data());
    return text;
  }

  static std::string Join(const std::string& folder, const std::string& name) {
    return folder + WithBackslashes(WithoutLeadingSeparator(name));
  }

  // A path that is found stands in `result`, which has room for kPathSize bytes.
  const char* CheckPath(const char* name, const std::string& folder, char* result) {
    if (*name == '\0') return nullptr;
    const char* const rest = SkipSeparator(name);
    if (folder.size() + std::strlen(rest) >= kPathSize) return nullptr;
    char candidate[kPathSize];
    std::strcpy(candidate, folder.c_str());
    std::strcpy(candidate + folder.size(), rest);
    TurnSeparators(candidate + folder.size());
    const int identifier = UniqueId(candidate);
    const auto found = remembered.find(identifier);
    if (found != remembered.end()) {
      if (found->second.size() >= kPathSize) return nullptr;
      return std::strcpy(result, found->second.c_str());
    }
    if (!exists(candidate)) return nullptr;
    remembered.emplace(identifier, candidate);
    return std::strcpy(result, candidate);
  }

  void LoadAddOnList() {
    char path[kPathSize];
    if (CheckPath(kListName, workFolder, path) == nullptr) return;
    const std::vector<std::string> lines = readList(path);
    if (lines.empty()) return;
    addOnFolder = lines.front();
    for (std::size_t i = 1; i < lines.size(); ++i) {
      addOnNames.push_back(LowerCase(WithBackslashes(lines[i])));
    }
  }

  // The place of `name` in the add-on's folder, else the name itself.
  void CheckAddOn(char* out, const char* name) {
    std::strcpy(out, name);
    if (addOnNames.empty()) LoadAddOnList();
    char listed[kTextSize];
    std::strcpy(listed, name);
    TurnSeparators(listed);
    ToLower(listed);
    for (const std::string& entry : addOnNames) {
      if (entry != listed) continue;
      const int size = std::snprintf(out, kTextSize, "%s%s", addOnFolder.c_str(), entry.c_str());
      if (size >= static_cast<int>(kPathSize)) out[0] = '\0';
      return;
    }
  }

  const char* GetPath(const char* name, char* result) {
    for (int pass = 0; pass < 4; ++pass) {
      char copy[kTextSize];
      std::strcpy(copy, name);
      if (pass % 2 == 1) ToLower(copy);
      char candidate[kTextSize];
      if (pass < 2) {
        std::snprintf(candidate, kTextSize, "%s:%s", languageFolder.c_str(), SkipSeparator(copy));
      } else {
        std::strcpy(candidate, copy);
      }
      if (CheckPath(candidate, writableFolder, result) != nullptr) return result;
      char place[kTextSize];
      CheckAddOn(place, candidate);
      if (CheckPath(place, workFolder, result) != nullptr) return result;
    }
    return nullptr;
  }

  std::optional<std::string> GetPath(const std::string& name) {
    char result[kPathSize];
    if (GetPath(name.c_str(), result) == nullptr) return std::nullopt;
    return result;
  }
};

}  // namespace kv::reference

#endif  // KVUTILS_TESTS_REFERENCE_RESOLVER_H_
