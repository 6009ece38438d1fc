// The resolver beside its defining form, on random disks.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/paths/noted_disk.h"
#include "tests/paths/resolver_fixture.h"
#include "tests/reference/resolver.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

namespace {

using kv::reference::Resolver;
using kv::test::Answer;
using kv::test::kNone;
using kv::test::NotedDisk;
using kv::test::OpenResolver;
using kv::test::PathBuffer;
using kv::test::WriteBytes;

using Texts = std::vector<std::string>;

class ResolverEquality : public kv::test::Sandbox {
 protected:
  std::size_t Below(std::size_t bound) { return random_() % bound; }
  bool OnceIn(std::size_t count) { return Below(count) == 0; }
  template <typename Text>
  std::string OneOf(std::initializer_list<Text> texts) {
    return *(texts.begin() + Below(texts.size()));
  }

  // Short names of few letters meet often; some are as long as a path or longer.
  std::string RandomName() {
    std::string name;
    for (std::size_t parts = Below(4); parts > 0; --parts) {
      name += OneOf({"a", "B", "en", "\xC3\x84", "ab", ":", ":", "\\", "/"});
    }
    if (OnceIn(8)) name += std::string(Below(530), OnceIn(2) ? 'n' : 'N');
    return name;
  }

  std::mt19937 random_{20240229};
  KelvarisPath resolver_;
  NotedDisk disk_{Root() + "list"};
};

// What the defining form asks, each question once.
class OnceEach {
 public:
  void Ask(const std::string& question) {
    if (std::find(questions_.begin(), questions_.end(), question) == questions_.end()) {
      questions_.push_back(question);
    }
  }
  Texts Take() { return std::exchange(questions_, {}); }

 private:
  Texts questions_;
};

class OnRandomDisks : public ResolverEquality {
 protected:
  OnRandomDisks() {
    plain_.exists = [this](const std::string& path) {
      questions_.Ask(path);
      return NotedDisk::Holds(path);
    };
    plain_.readList = [this](const std::string& path) {
      if (!path.empty()) questions_.Ask("open " + path);
      return NotedDisk::Holds(path) ? list_ : Texts();
    };
  }

  void GiveFolders() {
    plain_.workFolder = OneOf({"C:\\w\\", "C:\\w\\en\\", "C:\\W\\", ""});
    plain_.writableFolder = OneOf({"C:\\u\\", "C:\\w\\", "C:\\w\\en\\", ""});
    if (OnceIn(10)) plain_.workFolder = "C:\\" + std::string(Below(256), 'w');
    plain_.languageFolder = OneOf({"en", "en", "en", "", "EN", ":", ":en", "a:", "B\\a"});
    std::strcpy(KelvarisPath::ms_WorkDir, plain_.workFolder.c_str());
    std::strcpy(KelvarisPath::ms_WritablePath, plain_.writableFolder.c_str());
    KelvarisPath::ms_LanguageFolder = plain_.languageFolder;
  }

  // Of the list on the disk, for some disks to come; written seldom, because that takes long.
  void GiveList() {
    list_.clear();
    if (!OnceIn(3)) list_.push_back(OneOf({"p\\", "P/", "a", "\\p:"}));
    for (std::size_t names = list_.empty() ? 0 : Below(6); names > 0; --names) {
      std::string name = OnceIn(2) ? RandomName() : plain_.languageFolder + ":" + RandomName();
      name.resize(std::min<std::size_t>(name.size(), 255));
      if (!name.empty()) list_.push_back(name);
    }
    std::string content;
    for (const std::string& line : list_) content += line + "\n";
    WriteBytes(Root() + "list", content);
  }

  void ForgetList() {
    plain_.addOnFolder = KelvarisPath::sFeaturePackFolder = "";
    plain_.addOnNames.clear();
    if (OnceIn(8)) plain_.addOnNames = {"b", "a", ""};
    KelvarisPath::sFeaturePackFileNames = plain_.addOnNames;
  }

  // Any path that a search for the name may come to.
  std::string RandomPath(const std::string& name) {
    const std::string folder = OnceIn(2) ? plain_.workFolder : plain_.writableFolder;
    std::string candidate = name;
    if (OnceIn(2))
      candidate = plain_.languageFolder + ":" + Resolver::WithoutLeadingSeparator(name);
    if (OnceIn(3)) candidate = Resolver::LowerCase(candidate);
    if (OnceIn(4)) candidate = "p:" + Resolver::LowerCase(candidate);
    return Resolver::Join(folder, OnceIn(4) ? Resolver::kListName : candidate);
  }

  void GiveDisk(const Texts& names) {
    std::set<std::string> paths;
    for (const std::string& name : names) {
      while (!OnceIn(3)) paths.insert(RandomPath(name));
    }
    NotedDisk::Hold(std::move(paths));
  }

  void GiveMemory(const Texts& names) {
    plain_.remembered.clear();
    for (const std::string& name : names) {
      if (!OnceIn(6)) continue;
      const std::string answer = OnceIn(3) ? std::string(250 + Below(20), 'r') : RandomPath(name);
      plain_.remembered[GetUniqueID(RandomPath(name).c_str())] = answer;
    }
    KelvarisPath::ms_FileNamesStorage = plain_.remembered;
  }

  void Compare(const std::string& name) {
    SCOPED_TRACE("\"" + name + "\" with " + plain_.languageFolder + " in " + plain_.writableFolder +
                 " and " + plain_.workFolder);
    const bool tooLong = name.size() >= 520;
    const auto path = tooLong ? std::nullopt : plain_.GetPath(name);
    ASSERT_EQ(Answer(resolver_.GetPath(name.c_str())), path.value_or(kNone));
    ASSERT_EQ(NotedDisk::TakeNotes(), questions_.Take());
    ASSERT_EQ(KelvarisPath::ms_FileNamesStorage, plain_.remembered);
    ASSERT_EQ(KelvarisPath::sFeaturePackFolder, plain_.addOnFolder);
    ASSERT_EQ(KelvarisPath::sFeaturePackFileNames, plain_.addOnNames);
  }

  Texts list_;
  Resolver plain_;
  OnceEach questions_;
};

TEST_F(OnRandomDisks, AnswersRemembersAndAsksAsTheDefiningFormDoes) {
  for (int disk = 0; disk < 8000 && !HasFatalFailure(); ++disk) {
    SCOPED_TRACE(disk);
    GiveFolders();
    if (disk % 20 == 0) GiveList();
    ForgetList();
    Texts names(1 + Below(3));
    for (std::string& name : names) name = RandomName();
    GiveDisk(names);
    GiveMemory(names);
    for (int call = 0; call < 4 && !HasFatalFailure(); ++call) Compare(names[Below(names.size())]);
  }
}

// Any bytes but NUL, in every length that a text of the resolver may have.
TEST_F(ResolverEquality, ListedNamesAreComparedAsTheDefiningFormWritesThem) {
  OpenResolver steps;
  for (std::size_t size = 0; size < 520; ++size) {
    SCOPED_TRACE(size);
    std::string name(size, '\0');
    for (char& c : name) c = static_cast<char>(1 + Below(255));
    const std::string listed = Resolver::LowerCase(Resolver::WithBackslashes(name));
    PathBuffer out;
    KelvarisPath::sFeaturePackFileNames = {listed};
    EXPECT_TRUE(steps.CheckFeaturePackFile(out.Get(), name.c_str()));
    EXPECT_EQ(out.Text(), size < 260 ? listed : "");
    KelvarisPath::sFeaturePackFileNames = {listed + "\\", listed.substr(0, size / 2) + "N"};
    EXPECT_FALSE(steps.CheckFeaturePackFile(out.Get(), name.c_str()));
    EXPECT_EQ(out.Text(), size < 260 ? name : "");
    EXPECT_TRUE(out.GuardsHold());
  }
}

TEST_F(ResolverEquality, JoinedNamesAreThoseOfTheDefiningForm) {
  for (std::size_t size = 1; size < 270; ++size) {
    SCOPED_TRACE(size);
    std::string name(size, '\0');
    for (char& c : name) c = static_cast<char>(1 + Below(255));
    const std::string folder = "C:\\" + std::string(Below(20), ':');
    const std::string path = Resolver::Join(folder, name);
    KelvarisPath::ms_FileNamesStorage = {{GetUniqueID(path.c_str()), "found"}};
    EXPECT_EQ(Answer(resolver_.CheckPath(name.c_str(), folder.c_str())),
              path.size() < 260 ? "found" : kNone);
  }
}

}  // namespace
