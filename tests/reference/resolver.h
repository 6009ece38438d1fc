// The defining form of the resolver's search: four passes, each with every step.
#ifndef KVUTILS_TESTS_REFERENCE_RESOLVER_H_
#define KVUTILS_TESTS_REFERENCE_RESOLVER_H_

#include <algorithm>
#include <cctype>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/reference/identifiers.h"

namespace kv::reference {

// What the resolver goes by, and the two things that it asks of the file system.
struct Resolver {
  using Path = std::optional<std::string>;

  static constexpr std::size_t kLongestPath = 259;
  static constexpr char kListName[] = "feature_pack:feature_pack_filelist.txt";

  std::string workFolder;
  std::string writableFolder;
  std::string languageFolder;
  std::string addOnFolder;
  std::vector<std::string> addOnNames;
  std::map<int, std::string> remembered;
  std::function<bool(const std::string& path)> exists;
  // The significant lines of a list file up to its end mark; none when it cannot be opened.
  std::function<std::vector<std::string>(const std::string& path)> readList;

  static bool IsSeparator(char c) { return c == ':' || c == '\\' || c == '/'; }

  static std::string WithoutLeadingSeparator(const std::string& name) {
    return !name.empty() && IsSeparator(name.front()) ? name.substr(1) : name;
  }

  static std::string WithBackslashes(std::string text) {
    std::replace_if(text.begin(), text.end(), IsSeparator, '\\');
    return text;
  }

  static std::string LowerCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
  }

  static std::string Join(const std::string& folder, const std::string& name) {
    return folder + WithBackslashes(WithoutLeadingSeparator(name));
  }

  Path CheckPath(const std::string& name, const std::string& folder) {
    if (name.empty()) return std::nullopt;
    const std::string candidate = Join(folder, name);
    if (candidate.size() > kLongestPath) return std::nullopt;
    const int identifier = UniqueId(candidate.c_str());
    const auto found = remembered.find(identifier);
    if (found != remembered.end()) {
      return found->second.size() > kLongestPath ? std::nullopt : Path(found->second);
    }
    if (!exists(candidate)) return std::nullopt;
    remembered.emplace(identifier, candidate);
    return candidate;
  }

  void LoadAddOnList() {
    const Path path = CheckPath(kListName, workFolder);
    if (!path) return;
    const std::vector<std::string> lines = readList(*path);
    if (lines.empty()) return;
    addOnFolder = lines.front();
    for (std::size_t i = 1; i < lines.size(); ++i) {
      addOnNames.push_back(LowerCase(WithBackslashes(lines[i])));
    }
  }

  std::string AddOnPlace(const std::string& name) {
    if (addOnNames.empty()) LoadAddOnList();
    const std::string listed = LowerCase(WithBackslashes(name));
    const auto entry = std::find(addOnNames.begin(), addOnNames.end(), listed);
    if (entry == addOnNames.end()) return name;
    const std::string place = addOnFolder + *entry;
    return place.size() > kLongestPath ? "" : place;
  }

  Path GetPath(const std::string& name) {
    for (int pass = 0; pass < 4; ++pass) {
      const std::string copy = pass % 2 == 1 ? LowerCase(name) : name;
      const std::string candidate =
          pass < 2 ? languageFolder + ":" + WithoutLeadingSeparator(copy) : copy;
      if (const Path path = CheckPath(candidate, writableFolder)) return path;
      if (const Path path = CheckPath(AddOnPlace(candidate), workFolder)) return path;
    }
    return std::nullopt;
  }
};

}  // namespace kv::reference

#endif  // KVUTILS_TESTS_REFERENCE_RESOLVER_H_
