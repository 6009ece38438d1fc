// What the resolver asks the system, and what it allocates. A question costs a hundred times what
// the rest of a call costs.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <utility>
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

  static std::string Path(const std::string& row) {
    if (row.starts_with("U:")) return kWritable + row.substr(2);
    return row.starts_with("W:") ? kWork + row.substr(2) : row;
  }
  // Questions in their order, separated by spaces: a path, "list" for the add-on's list, "open" for
  // its opening.
  static Texts Questions(const std::string& row) {
    const std::string list = Path("W:feature_pack\\feature_pack_filelist.txt");
    std::istringstream words(row);
    Texts questions;
    for (std::string word; words >> word;) {
      questions.push_back(word == "list" ? list : word == "open" ? "open " + list : Path(word));
    }
    return questions;
  }
  // Paths as in Questions.
  static void Hold(const std::string& row) {
    const Texts paths = Questions(row);
    NotedDisk::Hold({paths.begin(), paths.end()});
  }

  KelvarisPath resolver;
  NotedDisk noted{Root() + "list"};
};

struct Case {
  const char* what;
  const char* language;
  const char* list;  // content of the add-on's list; null for none
  const char* name;
  const char* found;      // the one file; null for none
  const char* questions;  // of the first call
  const char* again;      // of the second
};

// Where the answer is found, with and without capitals. A remembered answer of the plain name takes
// 3 questions in the writable folder, 4 in the work folder, 6 there with a capital.
const Case kPlaces[] = {
    {"pass 0, writable", "en", nullptr, "m:a", "U:en\\m\\a", "U:en\\m\\a", ""},
    {"pass 0, work", "en", nullptr, "m:a", "W:en\\m\\a", "U:en\\m\\a list W:en\\m\\a",
     "U:en\\m\\a list"},
    {"pass 1, writable", "en", nullptr, "M:A", "U:en\\m\\a",
     "U:en\\M\\A list W:en\\M\\A U:en\\m\\a", "U:en\\M\\A list W:en\\M\\A"},
    {"pass 1, work", "en", nullptr, "M:A", "W:en\\m\\a",
     "U:en\\M\\A list W:en\\M\\A U:en\\m\\a W:en\\m\\a", "U:en\\M\\A list W:en\\M\\A U:en\\m\\a"},
    {"pass 2, writable", "en", nullptr, "m:a", "U:m\\a", "U:en\\m\\a list W:en\\m\\a U:m\\a",
     "U:en\\m\\a list W:en\\m\\a"},
    {"pass 2, work", "en", nullptr, "m:a", "W:m\\a", "U:en\\m\\a list W:en\\m\\a U:m\\a W:m\\a",
     "U:en\\m\\a list W:en\\m\\a U:m\\a"},
    {"pass 2, writable, a capital", "en", nullptr, "m:A", "U:m\\A",
     "U:en\\m\\A list W:en\\m\\A U:en\\m\\a W:en\\m\\a U:m\\A",
     "U:en\\m\\A list W:en\\m\\A U:en\\m\\a W:en\\m\\a"},
    {"pass 2, work, a capital", "en", nullptr, "m:A", "W:m\\A",
     "U:en\\m\\A list W:en\\m\\A U:en\\m\\a W:en\\m\\a U:m\\A W:m\\A",
     "U:en\\m\\A list W:en\\m\\A U:en\\m\\a W:en\\m\\a U:m\\A"},
    {"pass 3, writable", "en", nullptr, "m:A", "U:m\\a",
     "U:en\\m\\A list W:en\\m\\A U:en\\m\\a W:en\\m\\a U:m\\A W:m\\A U:m\\a",
     "U:en\\m\\A list W:en\\m\\A U:en\\m\\a W:en\\m\\a U:m\\A W:m\\A"},
    {"pass 3, work", "en", nullptr, "m:A", "W:m\\a",
     "U:en\\m\\A list W:en\\m\\A U:en\\m\\a W:en\\m\\a U:m\\A W:m\\A U:m\\a W:m\\a",
     "U:en\\m\\A list W:en\\m\\A U:en\\m\\a W:en\\m\\a U:m\\A W:m\\A U:m\\a"},
    {"nowhere", "en", nullptr, "m:a", nullptr, "U:en\\m\\a list W:en\\m\\a U:m\\a W:m\\a",
     "U:en\\m\\a list W:en\\m\\a U:m\\a W:m\\a"},
    {"nowhere, a capital", "en", nullptr, "m:A", nullptr,
     "U:en\\m\\A list W:en\\m\\A U:en\\m\\a W:en\\m\\a U:m\\A W:m\\A U:m\\a W:m\\a",
     "U:en\\m\\A list W:en\\m\\A U:en\\m\\a W:en\\m\\a U:m\\A W:m\\A U:m\\a W:m\\a"},
};

// Names and language folders of other forms.
const Case kForms[] = {
    {"a folder", "en", nullptr, "m:i:", "W:m\\i\\",
     "U:en\\m\\i\\ list W:en\\m\\i\\ U:m\\i\\ W:m\\i\\", "U:en\\m\\i\\ list W:en\\m\\i\\ U:m\\i\\"},
    {"a leading separator", "en", nullptr, "/m/a", nullptr,
     "U:en\\m\\a list W:en\\m\\a U:m\\a W:m\\a", "U:en\\m\\a list W:en\\m\\a U:m\\a W:m\\a"},
    {"two leading separators", "en", nullptr, "::a", nullptr,
     "U:en\\\\a list W:en\\\\a U:\\a W:\\a", "U:en\\\\a list W:en\\\\a U:\\a W:\\a"},
    {"no language folder", "", nullptr, "m:a", "W:m\\a", "U:m\\a list W:m\\a", "U:m\\a list"},
    {"no language folder, nowhere", "", nullptr, ":m:a", nullptr, "U:m\\a list W:m\\a",
     "U:m\\a list W:m\\a"},
    {"no language folder, a capital", "", nullptr, "A", nullptr, "U:A list W:A U:a W:a",
     "U:A list W:A U:a W:a"},
    {"a language folder with capitals", "EN", nullptr, "A", nullptr,
     "U:EN\\A list W:EN\\A U:EN\\a W:EN\\a U:A W:A U:a W:a",
     "U:EN\\A list W:EN\\A U:EN\\a W:EN\\a U:A W:A U:a W:a"},
    {"a language folder after a separator", ":en", nullptr, "a", nullptr,
     "U:en\\a list W:en\\a U:a W:a", "U:en\\a list W:en\\a U:a W:a"},
    {"the language folder is part of the name", "en", nullptr, "en:a", nullptr,
     "U:en\\en\\a list W:en\\en\\a U:en\\a W:en\\a",
     "U:en\\en\\a list W:en\\en\\a U:en\\a W:en\\a"},
    {"the empty name", "en", nullptr, "", nullptr, "U:en\\ list W:en\\", "U:en\\ list W:en\\"},
    {"the empty name without a language folder", "", nullptr, "", nullptr,
     "U: list W:", "U: list W:"},
    {"a separator alone", "en", nullptr, ":", nullptr,
     "U:en\\ list W:en\\ U: W:", "U:en\\ list W:en\\ U: W:"},
    {"no name", "en", nullptr, nullptr, nullptr, "", ""},
};

// The add-on's list.
const Case kLists[] = {
    {"absent, itself wanted", "en", nullptr, "feature_pack:feature_pack_filelist.txt", nullptr,
     "U:en\\feature_pack\\feature_pack_filelist.txt list "
     "W:en\\feature_pack\\feature_pack_filelist.txt U:feature_pack\\feature_pack_filelist.txt",
     "U:en\\feature_pack\\feature_pack_filelist.txt list "
     "W:en\\feature_pack\\feature_pack_filelist.txt U:feature_pack\\feature_pack_filelist.txt"},
    {"empty", "en", "", "a", "W:a", "U:en\\a list open W:en\\a U:a W:a",
     "U:en\\a open W:en\\a U:a"},
    {"of a folder alone", "en", "p\\\n", "a", nullptr, "U:en\\a list open W:en\\a U:a W:a",
     "U:en\\a open W:en\\a U:a W:a"},
    {"of other names", "en", "p\\\nb\n", "a", "W:a", "U:en\\a list open W:en\\a U:a W:a",
     "U:en\\a W:en\\a U:a"},
    {"of the name", "en", "p\\\na\n", "A", "W:p\\a",
     "U:en\\A list open W:en\\A U:en\\a W:en\\a U:A W:p\\a", "U:en\\A W:en\\A U:en\\a W:en\\a U:A"},
    {"of the name, whose file is missing", "en", "p\\\na\n", "A", nullptr,
     "U:en\\A list open W:en\\A U:en\\a W:en\\a U:A W:p\\a U:a",
     "U:en\\A W:en\\A U:en\\a W:en\\a U:A W:p\\a U:a"},
    {"of the variant", "en", "p\\\nen:a\n", "A", nullptr,
     "U:en\\A list open W:p\\en\\a U:en\\a U:A W:A U:a W:a",
     "U:en\\A W:p\\en\\a U:en\\a U:A W:A U:a W:a"},
    {"of the name, without a language folder", "", "p\\\na\n", "a", nullptr,
     "U:a list open W:a W:p\\a", "U:a W:a W:p\\a"},
};

class ResolverQuestionsAbout : public ResolverQuestions {
 protected:
  template <std::size_t kCount>
  void Ask(const Case (&rows)[kCount]) {
    for (const Case& row : rows) {
      SCOPED_TRACE(row.what);
      KelvarisPath::Done();
      KelvarisPath::SetLocaleFolder(row.language);
      const std::string found = row.found == nullptr ? "" : row.found;
      if (row.list != nullptr) WriteBytes(Root() + "list", row.list);
      Hold(found + (row.list == nullptr ? "" : " list"));
      const std::string answer = row.found == nullptr ? kNone : Path(found);
      EXPECT_EQ(Answer(resolver.GetPath(row.name)), answer);
      EXPECT_EQ(NotedDisk::TakeNotes(), Questions(row.questions));
      EXPECT_EQ(Answer(KelvarisPath().GetPath(row.name)), answer);
      EXPECT_EQ(NotedDisk::TakeNotes(), Questions(row.again));
    }
  }
};

TEST_F(ResolverQuestionsAbout, PlacesAreOneForEachDifferentPath) { Ask(kPlaces); }

TEST_F(ResolverQuestionsAbout, NamesOfOtherFormsAreOneForEachDifferentPath) { Ask(kForms); }

TEST_F(ResolverQuestionsAbout, TheAddOnListAreOneInACall) { Ask(kLists); }

TEST_F(ResolverQuestions, AreOneWhereBothFoldersAreTheSame) {
  SetFolders(kWork, kWork);
  EXPECT_EQ(resolver.GetPath("a"), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Questions("W:en\\a list W:a"));
}

TEST_F(ResolverQuestions, AreOneWhereTheWritableFolderIsTheAddOns) {
  SetFolders("C:\\inst\\p\\", kWork);
  WriteBytes(Root() + "list", "p\\\na\n");
  Hold("list");
  EXPECT_EQ(resolver.GetPath("A"), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(),
            Questions("W:p\\en\\A list open W:en\\A W:p\\en\\a W:en\\a W:p\\A W:p\\a"));
}

TEST_F(ResolverQuestions, AreNotAskedAboutOverlongPaths) {
  const std::string longest(259 - 8, 'n');
  EXPECT_EQ(resolver.GetPath(longest.c_str()), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Questions("list U:" + longest + " W:" + longest));
  EXPECT_EQ(resolver.GetPath((longest + "n").c_str()), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Questions("list"));
  EXPECT_EQ(resolver.GetPath(std::string(519, 'n').c_str()), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Questions("list"));
  EXPECT_EQ(resolver.GetPath(std::string(520, 'n').c_str()), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Texts());
  KelvarisPath::SetLocaleFolder(std::string(5000, 'l').c_str());
  EXPECT_EQ(resolver.GetPath("a"), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Questions("list U:a W:a"));
  // A variant that does not fit is not the empty name.
  KelvarisPath::sFeaturePackFolder = "p:";
  KelvarisPath::sFeaturePackFileNames = {""};
  EXPECT_EQ(resolver.GetPath("a"), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), Questions("U:a W:a"));
}

TEST_F(ResolverQuestions, AreTheSameForAnAnswerInItsBufferAsForACopy) {
  Hold("U:m\\a");
  const char* own = resolver.GetPath("m:a");
  ASSERT_NE(own, nullptr);
  const std::string copy = own;
  NotedDisk::TakeNotes();
  EXPECT_EQ(resolver.GetPath(own), nullptr);
  const Texts ofOwn = NotedDisk::TakeNotes();
  EXPECT_EQ(resolver.GetPath(copy.c_str()), nullptr);
  EXPECT_EQ(NotedDisk::TakeNotes(), ofOwn);
  EXPECT_EQ(ofOwn.size(), 9U);
}

TEST_F(ResolverQuestions, AreAskedAgainByTheNextCall) {
  EXPECT_EQ(resolver.GetPath("a"), nullptr);
  Hold("W:a");
  EXPECT_EQ(Answer(resolver.GetPath("a")), Path("W:a"));
  Hold("W:a U:en\\a");
  EXPECT_EQ(Answer(resolver.GetPath("a")), Path("U:en\\a"));
}

TEST_F(ResolverQuestions, AreOneInTheOtherOperations) {
  OpenResolver steps;
  char out[260];
  const auto expect = [](const char* what, const std::string& answer, const std::string& expected,
                         const char* questions) {
    SCOPED_TRACE(what);
    EXPECT_EQ(answer, Path(expected));
    EXPECT_EQ(NotedDisk::TakeNotes(), Questions(questions));
  };
  expect("CheckPath", Answer(resolver.CheckPath("m:a", nullptr)), kNone, "W:m\\a");
  expect("CheckPath, base", Answer(resolver.CheckPath("m:a", "D:\\")), kNone, "D:\\m\\a");
  expect("CheckPath, empty", Answer(resolver.CheckPath("", nullptr)), kNone, "");
  expect("optional, writable", Answer(resolver.GetWorkPath("a", false, true)), "U:a", "U:a");
  expect("optional, work", Answer(resolver.GetWorkPath("a", false, false)), "W:a", "U:a");
  expect("demanded, writable", Answer(resolver.GetWorkPath("a", true, true)), kNone, "U:a");
  expect("demanded, work", Answer(resolver.GetWorkPath("a", true, false)), kNone, "U:a W:a");
  for (int call = 0; call < 2; ++call) {
    expect("CheckFeaturePackFile", steps.CheckFeaturePackFile(out, "a") ? "listed" : "not listed",
           "not listed", "list");
  }
  Hold("W:m\\a");
  expect("CheckPath, found", Answer(resolver.CheckPath("m:a", nullptr)), "W:m\\a", "W:m\\a");
  expect("CheckPath, remembered", Answer(resolver.CheckPath("m:a", nullptr)), "W:m\\a", "");
  expect("demanded, remembered", Answer(resolver.GetWorkPath("m:a", true, false)), "W:m\\a",
         "U:m\\a W:m\\a");
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
  Hold("list W:m\\a");
  const char* const name = resolver.FromCDtoWorkPath("m:A");
  EXPECT_EQ(Answer(resolver.GetPath(name)), Path("W:m\\a"));
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
  Hold("U:en\\a U:b W:c");
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
