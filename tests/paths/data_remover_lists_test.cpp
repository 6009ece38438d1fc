// The two fixed lists: every row, in its order, and nothing else.
#include <gtest/gtest.h>
#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "tests/paths/data_remover_fixture.h"
#include "tests/support/import_patch.h"

namespace {

using kv::test::ListTree;
using kv::test::Narrow;

std::vector<std::string> g_deletions;

int WINAPI NoteShellDeletion(SHFILEOPSTRUCTW* operation) {
  g_deletions.push_back(Narrow(operation->pFrom));
  return 0;
}
BOOL WINAPI NoteFileDeletion(LPCWSTR path) {
  g_deletions.push_back(Narrow(path));
  return FALSE;
}

class FixedLists : public kv::test::RemovingData {
 protected:
  FixedLists() { GiveLanguages("de\nfr\n"); }

  // Everything that either list names, in the root and in each language, and what stays.
  void Fill() {
    for (const char* root : {"", "de\\", "fr\\", "ru\\"}) {
      for (const char* name :
           {"catalogs\\Planets&Moons\\f", "catalogs\\asteroids\\f", "catalogs\\comets\\f",
            "catalogs\\observed_objects\\f", "catalogs\\spacecraft\\f", "catalogs\\stars\\f",
            "download\\f", "home_params.ini", "media\\find\\Find_Stars_USNO.kwd",
            "media\\find\\others.kwd", "media\\fonts\\f", "media\\images\\f",
            "media\\information\\f", "media\\settings\\f", "media\\win_gui\\f", "Settings.INI",
            "user.wsi", "workspaces\\f"}) {
        Give(std::string(root) + name);
      }
    }
  }

  void GiveAllKinds(const std::string& folder) {
    for (const char* name : {"\\hidden.bin", "\\readonly.bin", "\\Луна.bin", "\\月\\月.bin"}) {
      Give(folder + name);
    }
    kv::test::SetHidden(Writable() + folder + "\\hidden.bin");
    kv::test::SetReadOnly(Writable() + folder + "\\readonly.bin", true);
    kv::test::SetReadOnly(Writable() + folder + "\\月\\月.bin", true);
    kv::test::CreateFolders(Writable() + folder + "\\empty");
  }

  // Two folders that go with all that is in them, one that stays, and chosen files.
  void FillWithAllKinds() {
    EmptyWritableFolder();
    for (const char* folder : {"catalogs\\asteroids", "catalogs\\stars", "de\\catalogs\\comets"}) {
      GiveAllKinds(folder);
    }
    for (const char* name : {"media\\find\\hidden.kwd", "media\\find\\readonly.kwd",
                             "media\\find\\Луна.kwd", "settings.ini", "user.wsi"}) {
      Give(name);
    }
    kv::test::SetHidden(Writable() + "media\\find\\hidden.kwd");
    kv::test::SetReadOnly(Writable() + "media\\find\\readonly.kwd", true);
    kv::test::SetHidden(Writable() + "settings.ini");
    kv::test::SetReadOnly(Writable() + "user.wsi", true);
    kv::test::CreateFolders(Writable() + "media\\find\\empty");
  }

  // What the action would delete, in its order, relative to the writable folder.
  template <typename Action>
  Texts Deletions(Action action) {
    g_deletions.clear();
    const kv::test::ImportPatch shell("SHFileOperationW", &NoteShellDeletion);
    const kv::test::ImportPatch file("DeleteFileW", &NoteFileDeletion);
    action();
    for (std::string& path : g_deletions) {
      EXPECT_EQ(path.substr(0, Writable().size()), Writable());
      path.erase(0, Writable().size());
    }
    return g_deletions;
  }
};

TEST_F(FixedLists, DownloadsGoInOrder) {
  Fill();
  EXPECT_EQ(Deletions([] { deleteDownloads(); }),
            (Texts{"de\\catalogs\\asteroids", "fr\\catalogs\\asteroids", "catalogs\\asteroids",
                   "de\\catalogs\\comets", "fr\\catalogs\\comets", "catalogs\\comets",
                   "de\\catalogs\\spacecraft", "fr\\catalogs\\spacecraft", "catalogs\\spacecraft",
                   "download", "de\\media\\find\\others.kwd", "fr\\media\\find\\others.kwd",
                   "media\\find\\others.kwd"}));
}

TEST_F(FixedLists, DataAfterAnErrorGoInOrder) {
  Fill();
  Texts deletions = Deletions([] { deleteDataAfterError(); });
  const Texts expected = {
      "de\\catalogs\\observed_objects", "fr\\catalogs\\observed_objects",
      "catalogs\\observed_objects", "de\\catalogs\\Planets&Moons", "fr\\catalogs\\Planets&Moons",
      "catalogs\\Planets&Moons", "de\\catalogs\\asteroids", "fr\\catalogs\\asteroids",
      "catalogs\\asteroids", "de\\catalogs\\comets", "fr\\catalogs\\comets", "catalogs\\comets",
      "de\\catalogs\\spacecraft", "fr\\catalogs\\spacecraft", "catalogs\\spacecraft", "workspaces",
      // These three in the order of the file system.
      ".\\Settings.INI", ".\\home_params.ini", ".\\user.wsi",  //
      "media\\find\\others.kwd", "media\\fonts", "media\\information", "media\\settings",
      "media\\win_gui", "de", "fr"};
  ASSERT_EQ(deletions.size(), expected.size());
  std::sort(deletions.begin() + 16, deletions.begin() + 19);
  EXPECT_EQ(deletions, expected);
}

TEST_F(FixedLists, DownloadsTakeWhatTheyNameAndNothingElse) {
  Fill();
  Give("media\\find\\sub\\kept.kwd");
  EXPECT_EQ(GoneAfter([] { deleteDownloads(); }), (Texts{"catalogs\\asteroids\\",
                                                         "catalogs\\asteroids\\f",
                                                         "catalogs\\comets\\",
                                                         "catalogs\\comets\\f",
                                                         "catalogs\\spacecraft\\",
                                                         "catalogs\\spacecraft\\f",
                                                         "de\\catalogs\\asteroids\\",
                                                         "de\\catalogs\\asteroids\\f",
                                                         "de\\catalogs\\comets\\",
                                                         "de\\catalogs\\comets\\f",
                                                         "de\\catalogs\\spacecraft\\",
                                                         "de\\catalogs\\spacecraft\\f",
                                                         "de\\media\\find\\others.kwd",
                                                         "download\\",
                                                         "download\\f",
                                                         "fr\\catalogs\\asteroids\\",
                                                         "fr\\catalogs\\asteroids\\f",
                                                         "fr\\catalogs\\comets\\",
                                                         "fr\\catalogs\\comets\\f",
                                                         "fr\\catalogs\\spacecraft\\",
                                                         "fr\\catalogs\\spacecraft\\f",
                                                         "fr\\media\\find\\others.kwd",
                                                         "media\\find\\others.kwd"}));
}

TEST_F(FixedLists, DataAfterAnErrorLeaveWhatTheyDoNotName) {
  Fill();
  Give("media\\find\\sub\\kept.kwd");
  EXPECT_FALSE(GoneAfter([] { deleteDataAfterError(); }).empty());
  EXPECT_EQ(ListTree(Writable()), (Texts{"catalogs\\",
                                         "catalogs\\stars\\",
                                         "catalogs\\stars\\f",
                                         "download\\",
                                         "download\\f",
                                         "media\\",
                                         "media\\find\\",
                                         "media\\find\\Find_Stars_USNO.kwd",
                                         "media\\find\\sub\\",
                                         "media\\find\\sub\\kept.kwd",
                                         "media\\images\\",
                                         "media\\images\\f",
                                         "ru\\",
                                         "ru\\Settings.INI",
                                         "ru\\catalogs\\",
                                         "ru\\catalogs\\Planets&Moons\\",
                                         "ru\\catalogs\\Planets&Moons\\f",
                                         "ru\\catalogs\\asteroids\\",
                                         "ru\\catalogs\\asteroids\\f",
                                         "ru\\catalogs\\comets\\",
                                         "ru\\catalogs\\comets\\f",
                                         "ru\\catalogs\\observed_objects\\",
                                         "ru\\catalogs\\observed_objects\\f",
                                         "ru\\catalogs\\spacecraft\\",
                                         "ru\\catalogs\\spacecraft\\f",
                                         "ru\\catalogs\\stars\\",
                                         "ru\\catalogs\\stars\\f",
                                         "ru\\download\\",
                                         "ru\\download\\f",
                                         "ru\\home_params.ini",
                                         "ru\\media\\",
                                         "ru\\media\\find\\",
                                         "ru\\media\\find\\Find_Stars_USNO.kwd",
                                         "ru\\media\\find\\others.kwd",
                                         "ru\\media\\fonts\\",
                                         "ru\\media\\fonts\\f",
                                         "ru\\media\\images\\",
                                         "ru\\media\\images\\f",
                                         "ru\\media\\information\\",
                                         "ru\\media\\information\\f",
                                         "ru\\media\\settings\\",
                                         "ru\\media\\settings\\f",
                                         "ru\\media\\win_gui\\",
                                         "ru\\media\\win_gui\\f",
                                         "ru\\user.wsi",
                                         "ru\\workspaces\\",
                                         "ru\\workspaces\\f"}));
}

TEST_F(FixedLists, TouchNothingOutsideTheWritableFolder) {
  Fill();
  kv::test::WriteBytes(Work() + "de\\media\\find\\others.kwd", "content");
  kv::test::WriteBytes(Work() + "workspaces\\f", "content");
  kv::test::WriteBytes(Work() + "settings.ini", "content");
  kv::test::WriteBytes(Documents() + "settings.ini", "content");
  const auto around = [this] {
    auto entries = kv::test::ReadTree(Root());
    std::erase_if(entries, [](const auto& entry) {
      return entry.first.find("Documents\\Kelvaris_9\\") == 0;
    });
    return entries;
  };
  const auto before = around();
  ASSERT_GT(before.size(), 20U);
  deleteDownloads();
  EXPECT_EQ(around(), before);
  deleteDataAfterError();
  EXPECT_EQ(around(), before);
}

TEST_F(FixedLists, TakeAndLeaveEntriesOfAllKinds) {
  FillWithAllKinds();
  EXPECT_EQ(GoneAfter([] { deleteDownloads(); }),
            (Texts{"catalogs\\asteroids\\", "catalogs\\asteroids\\empty\\",
                   "catalogs\\asteroids\\hidden.bin", "catalogs\\asteroids\\readonly.bin",
                   "catalogs\\asteroids\\Луна.bin", "catalogs\\asteroids\\月\\",
                   "catalogs\\asteroids\\月\\月.bin", "de\\catalogs\\comets\\",
                   "de\\catalogs\\comets\\empty\\", "de\\catalogs\\comets\\hidden.bin",
                   "de\\catalogs\\comets\\readonly.bin", "de\\catalogs\\comets\\Луна.bin",
                   "de\\catalogs\\comets\\月\\", "de\\catalogs\\comets\\月\\月.bin",
                   "media\\find\\hidden.kwd", "media\\find\\Луна.kwd"}));
  FillWithAllKinds();
  EXPECT_EQ(
      GoneAfter([] { deleteDataAfterError(); }),
      (Texts{"catalogs\\asteroids\\", "catalogs\\asteroids\\empty\\",
             "catalogs\\asteroids\\hidden.bin", "catalogs\\asteroids\\readonly.bin",
             "catalogs\\asteroids\\Луна.bin", "catalogs\\asteroids\\月\\",
             "catalogs\\asteroids\\月\\月.bin", "de\\", "de\\catalogs\\", "de\\catalogs\\comets\\",
             "de\\catalogs\\comets\\empty\\", "de\\catalogs\\comets\\hidden.bin",
             "de\\catalogs\\comets\\readonly.bin", "de\\catalogs\\comets\\Луна.bin",
             "de\\catalogs\\comets\\月\\", "de\\catalogs\\comets\\月\\月.bin",
             "media\\find\\hidden.kwd", "media\\find\\Луна.kwd", "settings.ini"}));
}

TEST_F(FixedLists, TakeThousandsOfFiles) {
  EmptyWritableFolder();
  for (int i = 0; i < 1500; ++i) {
    const std::string name = std::to_string(i) + ".kwd";
    for (const char* folder : {"media\\find\\", "catalogs\\comets\\"}) {
      kv::test::WriteBytes(Writable() + folder + name, "");
    }
  }
  Give("media\\find\\find_stars_usno.kwd");
  deleteDownloads();
  EXPECT_EQ(ListTree(Writable()),
            (Texts{"catalogs\\", "media\\", "media\\find\\", "media\\find\\find_stars_usno.kwd"}));
}

TEST_F(FixedLists, AreAppliedToAnEmptyFolderWithoutHarm) {
  EmptyWritableFolder();
  EXPECT_EQ(GoneAfter([] { deleteDownloads(); }), Texts{});
  EXPECT_EQ(GoneAfter([] { deleteDataAfterError(); }), Texts{});
  kv::test::RemoveTree(Documents() + "Kelvaris_9");
  EXPECT_EQ(GoneAfter([] { deleteDownloads(); }), Texts{});
  EXPECT_EQ(GoneAfter([] { deleteDataAfterError(); }), Texts{});
}

}  // namespace
