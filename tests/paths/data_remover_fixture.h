// What the tests of the data remover share: a writable folder full of data with neighbours around
// it, and what of all that is gone after a removal.
#ifndef KVUTILS_TESTS_PATHS_DATA_REMOVER_FIXTURE_H_
#define KVUTILS_TESTS_PATHS_DATA_REMOVER_FIXTURE_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/sandbox.h"
#include "utils/paths/paths.h"

namespace kv::test {

class RemovingData : public Sandbox {
 protected:
  using Texts = std::vector<std::string>;

  RemovingData() {
    for (const char* name : {"Documents\\sibling\\a\\1.txt", "Documents\\Kelvaris_91\\1.txt",
                             "Documents\\1.txt", "outside\\a\\1.txt", "work\\a\\1.txt",
                             "work\\de\\a\\1.txt", "work\\download\\1.txt", "work\\1.txt"}) {
      WriteBytes(Root() + name, "content");
    }
    const KelvarisPath resolver;  // finds the folders
  }

  void GiveLanguages(const std::string& content) {
    WriteBytes(Work() + "media\\supported_languages.ini", content);
  }
  void Give(const std::string& name) { WriteBytes(Writable() + name, "content"); }
  void EmptyWritableFolder() {
    RemoveTree(Documents() + "Kelvaris_9");
    CreateFolders(Documents() + "Kelvaris_9");
  }

  static void Remove(const std::vector<const char*>& descriptors) {
    KvFoldersRemover(descriptors.data(), static_cast<int>(descriptors.size())).Run();
  }

  // The entries of the whole sandbox that `action` takes away, sorted; those of the writable folder
  // relative to it, so that the folder itself is "". What appears or changes is no less wrong.
  template <typename Action>
  Texts GoneAfter(Action action) {
    const auto before = ReadTree(Root());
    action();
    const auto after = ReadTree(Root());
    EXPECT_TRUE(std::includes(before.begin(), before.end(), after.begin(), after.end()));
    Texts gone;
    for (const auto& [entry, content] : before) {
      if (after.count(entry) == 0) gone.push_back(entry);
    }
    const std::string writable = "Documents\\Kelvaris_9\\";
    for (std::string& entry : gone) {
      if (entry.compare(0, writable.size(), writable) == 0) entry.erase(0, writable.size());
    }
    return gone;
  }
  Texts GoneAfter(const std::vector<const char*>& descriptors) {
    return GoneAfter([&descriptors] { Remove(descriptors); });
  }
};

// Three languages, one of them without a folder, and a small tree that each row is applied to.
class DataRemover : public RemovingData {
 protected:
  DataRemover() {
    GiveLanguages("de\nfr\nes\n");
    Fill();
  }

  // "es" is a language without a folder, "ru" a folder of no language.
  void Fill() {
    EmptyWritableFolder();
    for (const char* name :
         {"1.txt", "Other.INI", "a\\1.txt", "a\\2.txt", "a\\sub\\3.txt", "b\\1.txt", "de\\1.txt",
          "de\\a\\1.txt", "de\\a\\2.txt", "fr\\a\\1.txt", "fr\\b\\1.txt", "ru\\a\\1.txt"}) {
      Give(name);
    }
  }

  struct Case {
    std::vector<const char*> descriptors;
    Texts gone;
  };
  void Check(const std::vector<Case>& cases) {
    for (const Case& row : cases) {
      std::string trace;
      for (const char* descriptor : row.descriptors) {
        trace += descriptor == nullptr ? "(null)" : descriptor;
        trace += " | ";
      }
      SCOPED_TRACE(trace);
      Fill();
      EXPECT_EQ(GoneAfter(row.descriptors), row.gone);
    }
  }

  const Texts kEverything = {
      "",         "1.txt",         "Other.INI",    "a\\",      "a\\1.txt",    "a\\2.txt",
      "a\\sub\\", "a\\sub\\3.txt", "b\\",          "b\\1.txt", "de\\",        "de\\1.txt",
      "de\\a\\",  "de\\a\\1.txt",  "de\\a\\2.txt", "fr\\",     "fr\\a\\",     "fr\\a\\1.txt",
      "fr\\b\\",  "fr\\b\\1.txt",  "ru\\",         "ru\\a\\",  "ru\\a\\1.txt"};
  const Texts kLanguageFolders = {"de\\",         "de\\1.txt",   "de\\a\\", "de\\a\\1.txt",
                                  "de\\a\\2.txt", "fr\\",        "fr\\a\\", "fr\\a\\1.txt",
                                  "fr\\b\\",      "fr\\b\\1.txt"};
  const Texts kA = {"a\\", "a\\1.txt", "a\\2.txt", "a\\sub\\", "a\\sub\\3.txt"};
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PATHS_DATA_REMOVER_FIXTURE_H_
