// What the resolver asks the system, and what it allocates. A question costs a hundred times what
// the rest of a call costs.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "tests/paths/noted_disk.h"
#include "tests/paths/resolver_fixture.h"
#include "tests/support/failing_system.h"
#include "tests/support/import_patch.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

namespace {

using kv::test::Answer;
using kv::test::ImportPatch;
using kv::test::kNone;
using kv::test::NotedDisk;
using kv::test::OpenResolver;
using kv::test::WriteBytes;

using Texts = std::vector<std::string>;

constexpr char kList[] = "W:feature_pack\\feature_pack_filelist.txt";

class ResolverQuestions : public kv::test::Sandbox {
 protected:
  // The paths of the rows begin with "U:" for the user's writable folder, "W:" for the work folder.
  static constexpr char kWritable[] = "C:\\user\\";
  static constexpr char kWork[] = "C:\\inst\\";

  void SetUp() override { SetFolders(kWritable, kWork); }

  static void SetFolders(const char* writable, const char* work) {
    KelvarisPath::SetWritableFolder(writable);
    std::strcpy(KelvarisPath::ms_WorkDir, work);
  }

  static std::string Spelt(const std::string& row) {
    if (row.starts_with("U:")) return kWritable + row.substr(2);
    return row.starts_with("W:") ? kWork + row.substr(2) : row;
  }
  static Texts Spelt(Texts row) {
    for (std::string& text : row) {
      text = text.starts_with("open ") ? "open " + Spelt(text.substr(5)) : Spelt(text);
    }
    return row;
  }
  static void Hold(const Texts& paths) {
    const Texts spelt = Spelt(paths);
    NotedDisk::Hold({spelt.begin(), spelt.end()});
  }

  // Gives the list its content, unless it is null: then the disk holds no list.
  void GiveList(const char* content, Texts& paths) {
    if (content == nullptr) return;
    WriteBytes(Root() + "list", content);
    paths.emplace_back(kList);
  }

  KelvarisPath resolver;
  NotedDisk noted{Root() + "list"};
};

struct Case {
  const char* what;
  const char* language;
  const char* list;  // content of the add-on list; null for none
  const char* name;
  const char* found;  // the one file; null for none
  Texts questions;    // of the first call
  Texts again;        // of the second
};

// Where the answer is found, with and without capitals.
const Case kPlaces[] = {
    {"pass 0, writable", "en", nullptr, "m:a.txt", "U:en\\m\\a.txt", {"U:en\\m\\a.txt"}, {}},
    {"pass 0, work",
     "en",
     nullptr,
     "m:a.txt",
     "W:en\\m\\a.txt",
     {"U:en\\m\\a.txt", kList, "W:en\\m\\a.txt"},
     {"U:en\\m\\a.txt", kList}},
    {"pass 1, writable",
     "en",
     nullptr,
     "M:A.txt",
     "U:en\\m\\a.txt",
     {"U:en\\M\\A.txt", kList, "W:en\\M\\A.txt", "U:en\\m\\a.txt"},
     {"U:en\\M\\A.txt", kList, "W:en\\M\\A.txt"}},
    {"pass 1, work",
     "en",
     nullptr,
     "M:A.txt",
     "W:en\\m\\a.txt",
     {"U:en\\M\\A.txt", kList, "W:en\\M\\A.txt", "U:en\\m\\a.txt", "W:en\\m\\a.txt"},
     {"U:en\\M\\A.txt", kList, "W:en\\M\\A.txt", "U:en\\m\\a.txt"}},
    {"pass 2, writable",
     "en",
     nullptr,
     "m:a.txt",
     "U:m\\a.txt",
     {"U:en\\m\\a.txt", kList, "W:en\\m\\a.txt", "U:m\\a.txt"},
     {"U:en\\m\\a.txt", kList, "W:en\\m\\a.txt"}},
    {"pass 2, work",
     "en",
     nullptr,
     "m:a.txt",
     "W:m\\a.txt",
     {"U:en\\m\\a.txt", kList, "W:en\\m\\a.txt", "U:m\\a.txt", "W:m\\a.txt"},
     {"U:en\\m\\a.txt", kList, "W:en\\m\\a.txt", "U:m\\a.txt"}},
    {"pass 2, writable, a capital",
     "en",
     nullptr,
     "m:A.txt",
     "U:m\\A.txt",
     {"U:en\\m\\A.txt", kList, "W:en\\m\\A.txt", "U:en\\m\\a.txt", "W:en\\m\\a.txt", "U:m\\A.txt"},
     {"U:en\\m\\A.txt", kList, "W:en\\m\\A.txt", "U:en\\m\\a.txt", "W:en\\m\\a.txt"}},
    {"pass 2, work, a capital",
     "en",
     nullptr,
     "m:A.txt",
     "W:m\\A.txt",
     {"U:en\\m\\A.txt", kList, "W:en\\m\\A.txt", "U:en\\m\\a.txt", "W:en\\m\\a.txt", "U:m\\A.txt",
      "W:m\\A.txt"},
     {"U:en\\m\\A.txt", kList, "W:en\\m\\A.txt", "U:en\\m\\a.txt", "W:en\\m\\a.txt", "U:m\\A.txt"}},
    {"pass 3, writable",
     "en",
     nullptr,
     "m:A.txt",
     "U:m\\a.txt",
     {"U:en\\m\\A.txt", kList, "W:en\\m\\A.txt", "U:en\\m\\a.txt", "W:en\\m\\a.txt", "U:m\\A.txt",
      "W:m\\A.txt", "U:m\\a.txt"},
     {"U:en\\m\\A.txt", kList, "W:en\\m\\A.txt", "U:en\\m\\a.txt", "W:en\\m\\a.txt", "U:m\\A.txt",
      "W:m\\A.txt"}},
    {"pass 3, work",
     "en",
     nullptr,
     "m:A.txt",
     "W:m\\a.txt",
     {"U:en\\m\\A.txt", kList, "W:en\\m\\A.txt", "U:en\\m\\a.txt", "W:en\\m\\a.txt", "U:m\\A.txt",
      "W:m\\A.txt", "U:m\\a.txt", "W:m\\a.txt"},
     {"U:en\\m\\A.txt", kList, "W:en\\m\\A.txt", "U:en\\m\\a.txt", "W:en\\m\\a.txt", "U:m\\A.txt",
      "W:m\\A.txt", "U:m\\a.txt"}},
    {"nowhere",
     "en",
     nullptr,
     "m:a.txt",
     nullptr,
     {"U:en\\m\\a.txt", kList, "W:en\\m\\a.txt", "U:m\\a.txt", "W:m\\a.txt"},
     {"U:en\\m\\a.txt", kList, "W:en\\m\\a.txt", "U:m\\a.txt", "W:m\\a.txt"}},
    {"nowhere, a capital",
     "en",
     nullptr,
     "m:A.txt",
     nullptr,
     {"U:en\\m\\A.txt", kList, "W:en\\m\\A.txt", "U:en\\m\\a.txt", "W:en\\m\\a.txt", "U:m\\A.txt",
      "W:m\\A.txt", "U:m\\a.txt", "W:m\\a.txt"},
     {"U:en\\m\\A.txt", kList, "W:en\\m\\A.txt", "U:en\\m\\a.txt", "W:en\\m\\a.txt", "U:m\\A.txt",
      "W:m\\A.txt", "U:m\\a.txt", "W:m\\a.txt"}},
};

// Names and language folders of other forms.
const Case kForms[] = {
    {"a folder",
     "en",
     nullptr,
     "m:i:",
     "W:m\\i\\",
     {"U:en\\m\\i\\", kList, "W:en\\m\\i\\", "U:m\\i\\", "W:m\\i\\"},
     {"U:en\\m\\i\\", kList, "W:en\\m\\i\\", "U:m\\i\\"}},
    {"a leading separator",
     "en",
     nullptr,
     "/m/a.txt",
     nullptr,
     {"U:en\\m\\a.txt", kList, "W:en\\m\\a.txt", "U:m\\a.txt", "W:m\\a.txt"},
     {"U:en\\m\\a.txt", kList, "W:en\\m\\a.txt", "U:m\\a.txt", "W:m\\a.txt"}},
    {"two leading separators",
     "en",
     nullptr,
     "::a",
     nullptr,
     {"U:en\\\\a", kList, "W:en\\\\a", "U:\\a", "W:\\a"},
     {"U:en\\\\a", kList, "W:en\\\\a", "U:\\a", "W:\\a"}},
    {"no language folder",
     "",
     nullptr,
     "m:a",
     "W:m\\a",
     {"U:m\\a", kList, "W:m\\a"},
     {"U:m\\a", kList}},
    {"no language folder, nowhere",
     "",
     nullptr,
     ":m:a",
     nullptr,
     {"U:m\\a", kList, "W:m\\a"},
     {"U:m\\a", kList, "W:m\\a"}},
    {"no language folder, a capital",
     "",
     nullptr,
     "A",
     nullptr,
     {"U:A", kList, "W:A", "U:a", "W:a"},
     {"U:A", kList, "W:A", "U:a", "W:a"}},
    {"a language folder with capitals",
     "EN",
     nullptr,
     "A",
     nullptr,
     {"U:EN\\A", kList, "W:EN\\A", "U:EN\\a", "W:EN\\a", "U:A", "W:A", "U:a", "W:a"},
     {"U:EN\\A", kList, "W:EN\\A", "U:EN\\a", "W:EN\\a", "U:A", "W:A", "U:a", "W:a"}},
    {"a language folder after a separator",
     ":en",
     nullptr,
     "a",
     nullptr,
     {"U:en\\a", kList, "W:en\\a", "U:a", "W:a"},
     {"U:en\\a", kList, "W:en\\a", "U:a", "W:a"}},
    {"the language folder is part of the name",
     "en",
     nullptr,
     "en:a",
     nullptr,
     {"U:en\\en\\a", kList, "W:en\\en\\a", "U:en\\a", "W:en\\a"},
     {"U:en\\en\\a", kList, "W:en\\en\\a", "U:en\\a", "W:en\\a"}},
    {"the empty name",
     "en",
     nullptr,
     "",
     nullptr,
     {"U:en\\", kList, "W:en\\"},
     {"U:en\\", kList, "W:en\\"}},
    {"the empty name without a language folder",
     "",
     nullptr,
     "",
     nullptr,
     {"U:", kList, "W:"},
     {"U:", kList, "W:"}},
    {"a separator alone",
     "en",
     nullptr,
     ":",
     nullptr,
     {"U:en\\", kList, "W:en\\", "U:", "W:"},
     {"U:en\\", kList, "W:en\\", "U:", "W:"}},
    {"no name", "en", nullptr, nullptr, nullptr, {}, {}},
};

// The add-on list.
const Case kLists[] = {
    {"absent, itself wanted",
     "en",
     nullptr,
     "feature_pack:feature_pack_filelist.txt",
     nullptr,
     {"U:en\\feature_pack\\feature_pack_filelist.txt", kList,
      "W:en\\feature_pack\\feature_pack_filelist.txt", "U:feature_pack\\feature_pack_filelist.txt"},
     {"U:en\\feature_pack\\feature_pack_filelist.txt", kList,
      "W:en\\feature_pack\\feature_pack_filelist.txt",
      "U:feature_pack\\feature_pack_filelist.txt"}},
    {"empty",
     "en",
     "",
     "a",
     "W:a",
     {"U:en\\a", kList, "open W:feature_pack\\feature_pack_filelist.txt", "W:en\\a", "U:a", "W:a"},
     {"U:en\\a", "open W:feature_pack\\feature_pack_filelist.txt", "W:en\\a", "U:a"}},
    {"of a folder alone",
     "en",
     "p\\\n",
     "a",
     nullptr,
     {"U:en\\a", kList, "open W:feature_pack\\feature_pack_filelist.txt", "W:en\\a", "U:a", "W:a"},
     {"U:en\\a", "open W:feature_pack\\feature_pack_filelist.txt", "W:en\\a", "U:a", "W:a"}},
    {"of other names",
     "en",
     "p\\\nb\n",
     "a",
     "W:a",
     {"U:en\\a", kList, "open W:feature_pack\\feature_pack_filelist.txt", "W:en\\a", "U:a", "W:a"},
     {"U:en\\a", "W:en\\a", "U:a"}},
    {"of the name",
     "en",
     "p\\\na\n",
     "A",
     "W:p\\a",
     {"U:en\\A", kList, "open W:feature_pack\\feature_pack_filelist.txt", "W:en\\A", "U:en\\a",
      "W:en\\a", "U:A", "W:p\\a"},
     {"U:en\\A", "W:en\\A", "U:en\\a", "W:en\\a", "U:A"}},
    {"of the name, whose file is missing",
     "en",
     "p\\\na\n",
     "A",
     nullptr,
     {"U:en\\A", kList, "open W:feature_pack\\feature_pack_filelist.txt", "W:en\\A", "U:en\\a",
      "W:en\\a", "U:A", "W:p\\a", "U:a"},
     {"U:en\\A", "W:en\\A", "U:en\\a", "W:en\\a", "U:A", "W:p\\a", "U:a"}},
    {"of the variant",
     "en",
     "p\\\nen:a\n",
     "A",
     nullptr,
     {"U:en\\A", kList, "open W:feature_pack\\feature_pack_filelist.txt", "W:p\\en\\a", "U:en\\a",
      "U:A", "W:A", "U:a", "W:a"},
     {"U:en\\A", "W:p\\en\\a", "U:en\\a", "U:A", "W:A", "U:a", "W:a"}},
    {"of the name, without a language folder",
     "",
     "p\\\na\n",
     "a",
     nullptr,
     {"U:a", kList, "open W:feature_pack\\feature_pack_filelist.txt", "W:a", "W:p\\a"},
     {"U:a", "W:a", "W:p\\a"}},
};

class ResolverQuestionsAbout : public ResolverQuestions {
 protected:
  template <std::size_t kCount>
  void Ask(const Case (&rows)[kCount]) {
    for (const Case& row : rows) {
      SCOPED_TRACE(row.what);
      KelvarisPath::Done();
      KelvarisPath::SetLocaleFolder(row.language);
      Texts paths;
      GiveList(row.list, paths);
      if (row.found != nullptr) paths.emplace_back(row.found);
      Hold(paths);
      const std::string answer = row.found == nullptr ? kNone : Spelt(std::string(row.found));
      EXPECT_EQ(Answer(resolver.GetPath(row.name)), answer);
      EXPECT_EQ(NotedDisk::TakeNotes(), Spelt(row.questions));
      EXPECT_EQ(Answer(KelvarisPath().GetPath(row.name)), answer);
      EXPECT_EQ(NotedDisk::TakeNotes(), Spelt(row.again));
    }
  }
};

TEST_F(ResolverQuestionsAbout, PlacesAreOneForEachDifferentPath) { Ask(kPlaces); }

TEST_F(ResolverQuestionsAbout, NamesOfOtherFormsAreOneForEachDifferentPath) { Ask(kForms); }

TEST_F(ResolverQuestionsAbout, TheAddOnListAreOneInACall) { Ask(kLists); }

TEST_F(ResolverQuestions, AreOneWhereBothFoldersAreTheSame) {
  SetFolders(kWork, kWork);
  EXPECT_EQ(resolver.GetPath("a"), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Spelt(Texts{"W:en\\a", kList, "W:a"}));
}

TEST_F(ResolverQuestions, AreNotAskedAboutOverlongPaths) {
  const std::string longest(259 - 8, 'n');
  EXPECT_EQ(resolver.GetPath(longest.c_str()), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Spelt(Texts{kList, "U:" + longest, "W:" + longest}));
  EXPECT_EQ(resolver.GetPath((longest + "n").c_str()), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Spelt(Texts{kList}));
  EXPECT_EQ(resolver.GetPath(std::string(520, 'n').c_str()), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Texts());
  KelvarisPath::SetLocaleFolder(std::string(5000, 'l').c_str());
  EXPECT_EQ(resolver.GetPath("a"), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Spelt(Texts{kList, "U:a", "W:a"}));
}

TEST_F(ResolverQuestions, AreAskedAgainByTheNextCall) {
  EXPECT_EQ(resolver.GetPath("a"), nullptr);
  Hold({"W:a"});
  EXPECT_EQ(Answer(resolver.GetPath("a")), Spelt("W:a"));
  Hold({"W:a", "U:en\\a"});
  EXPECT_EQ(Answer(resolver.GetPath("a")), Spelt("U:en\\a"));
}

TEST_F(ResolverQuestions, AreOneInTheOtherOperations) {
  OpenResolver steps;
  char out[260];
  const auto given = [](const char* answer) { return Answer(answer); };
  const auto expect = [](const char* what, const std::string& answer, const std::string& expected,
                         const Texts& questions) {
    SCOPED_TRACE(what);
    EXPECT_EQ(answer, Spelt(expected));
    EXPECT_EQ(NotedDisk::TakeNotes(), Spelt(questions));
  };
  expect("CheckPath", given(resolver.CheckPath("m:a", nullptr)), kNone, {"W:m\\a"});
  expect("CheckPath, base", given(resolver.CheckPath("m:a", "D:\\")), kNone, {"D:\\m\\a"});
  expect("CheckPath, empty", given(resolver.CheckPath("", nullptr)), kNone, {});
  expect("optional, writable", given(resolver.GetWorkPath("a", false, true)), "U:a", {"U:a"});
  expect("optional, work", given(resolver.GetWorkPath("a", false, false)), "W:a", {"U:a"});
  expect("demanded, writable", given(resolver.GetWorkPath("a", true, true)), kNone, {"U:a"});
  expect("demanded, work", given(resolver.GetWorkPath("a", true, false)), kNone, {"U:a", "W:a"});
  for (int call = 0; call < 2; ++call) {
    expect("CheckFeaturePackFile", steps.CheckFeaturePackFile(out, "a") ? "listed" : "not listed",
           "not listed", {kList});
  }
  Hold({"W:m\\a"});
  expect("CheckPath, found", given(resolver.CheckPath("m:a", nullptr)), "W:m\\a", {"W:m\\a"});
  expect("CheckPath, remembered", given(resolver.CheckPath("m:a", nullptr)), "W:m\\a", {});
  expect("demanded, remembered", given(resolver.GetWorkPath("m:a", true, false)), "W:m\\a",
         {"U:m\\a", "W:m\\a"});
}

// What is found meanwhile, here the list, answers for an earlier path of the same identifier.
TEST_F(ResolverQuestions, DoNotStandBeforeWhatIsRememberedMeanwhile) {
  SetFolders("C:\\oyflwtaq\\", "C:\\cmvzcgqa\\");
  const std::string list = "C:\\cmvzcgqa\\feature_pack\\feature_pack_filelist.txt";
  const std::string path = "C:\\oyflwtaq\\feature_pack\\feature_pack_filelist.txt";
  ASSERT_EQ(GetUniqueID(path.c_str()), GetUniqueID(list.c_str()));
  WriteBytes(Root() + "list", "p\\\nfeature_pack:feature_pack_filelist.txt\n");
  NotedDisk::Hold({list});
  KelvarisPath::SetLocaleFolder("feature_pack");
  EXPECT_EQ(Answer(resolver.GetPath("feature_pack_filelist.txt")), list);
  EXPECT_EQ(NotedDisk::TakeNotes(),
            (Texts{path, list, "open " + list,
                   "C:\\cmvzcgqa\\p\\feature_pack\\feature_pack_filelist.txt"}));
}

TEST_F(ResolverQuestions, MayBeAboutANameInTheResultBuffer) {
  WriteBytes(Root() + "list", "p\\\nb\n");
  Hold({kList, "W:m\\a"});
  const char* const name = resolver.FromCDtoWorkPath("m:A");
  EXPECT_EQ(Answer(resolver.GetPath(name)), Spelt("W:m\\a"));
}

// Counts what the library allocates.
class Allocations {
 public:
  static std::vector<std::size_t> Take() { return std::exchange(sizes_, {}); }

 private:
  static void* New(std::size_t size) { return Note(size), ::operator new(size); }
  static void* NewArray(std::size_t size) { return Note(size), ::operator new[](size); }
  static void* Malloc(std::size_t size) { return Note(size), std::malloc(size); }
  static void Note(std::size_t size) { sizes_.push_back(size); }

  static inline std::vector<std::size_t> sizes_;

  ImportPatch new_{kv::test::kNew, &New};
  ImportPatch newArray_{"_Znay", &NewArray};
  ImportPatch malloc_{"malloc", &Malloc};
};

TEST_F(ResolverQuestions, AllocateNothingButTheResultBuffer) {
  Hold({"U:en\\a", "U:b", "W:c"});
  for (const char* name : {"a", "b", "c"}) ASSERT_NE(resolver.GetPath(name), nullptr);
  for (const char* name : {"a", "b", "c", "C", "nowhere"}) {
    SCOPED_TRACE(name);
    std::vector<std::size_t> construction;
    std::vector<std::size_t> search;
    {
      const Allocations allocations;
      KelvarisPath own;
      construction = Allocations::Take();
      own.GetPath(name);
      search = Allocations::Take();
    }
    ASSERT_EQ(construction.size(), 1U);
    EXPECT_GE(construction.front(), 260U);
    EXPECT_LE(construction.front(), 320U);
    EXPECT_EQ(search, std::vector<std::size_t>());
  }
}

}  // namespace
