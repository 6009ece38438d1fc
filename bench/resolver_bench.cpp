// Data names to paths. The folders stand in the temporary folder of the system and are removed.
#include <windows.h>

#include <io.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "bench/support/opaque.h"
#include "tests/reference/resolver.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

namespace {

namespace fs = std::filesystem;

using kv::bench::Comparison;
using kv::bench::Require;
using kv::reference::Resolver;

// Existence as the defining form asks for it: the attributes of a folder, else the access of a
// file.
bool ExistsPlainly(const char* path) {
  const std::wstring wide = Ascii2Unicode(path, true);
  const DWORD attributes = ::GetFileAttributesW(wide.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
    return true;
  return ::_waccess(wide.c_str(), 0) == 0;
}

// An installation and a writable folder, each with some files, known to the library and to the
// plain form.
class World {
 public:
  World() {
    fs::create_directories(root_ / "work" / "media" / "images");
    fs::create_directories(root_ / "writable" / "media" / "images");
    fs::create_directories(root_ / "writable" / "en" / "media" / "images");
    Give("work/media/images/installed_star.png");
    Give("writable/media/images/updated_star.png");
    Give("writable/en/media/images/translated_star.png");
    plain_.workFolder = (root_ / "work").string() + "\\";
    plain_.writableFolder = (root_ / "writable").string() + "\\";
    plain_.languageFolder = "en";
    plain_.exists = ExistsPlainly;
    plain_.readList = [](const char*) { return std::vector<std::string>(); };
    const KelvarisPath discovery;
    std::strcpy(KelvarisPath::ms_WorkDir, plain_.workFolder.c_str());
    KelvarisPath::SetWritableFolder(plain_.writableFolder.c_str());
  }
  World(const World&) = delete;
  World& operator=(const World&) = delete;
  ~World() { fs::remove_all(root_); }

  Resolver& Plain() { return plain_; }
  std::string InWork(const std::string& name) { return plain_.workFolder + name; }
  std::string InWritable(const std::string& name) { return plain_.writableFolder + name; }

  // Both forms remember the same two thousand paths.
  void Fill() {
    std::mt19937 random(20240229);
    for (int i = 0; i < 2000; ++i) {
      std::string path = InWork("media\\");
      for (int c = 0; c < 20; ++c) path += static_cast<char>('a' + random() % 26);
      plain_.remembered.emplace(GetUniqueID(path.c_str()), path);
    }
    KelvarisPath::ms_FileNamesStorage = plain_.remembered;
  }

 private:
  void Give(const char* file) { std::ofstream(root_ / file) << "content"; }

  fs::path root_ = fs::temp_directory_path() / "kvutils resolver bench";
  Resolver plain_;
};

World& TheWorld() {
  static World world;
  return world;
}

struct Row {
  const char* what;
  const char* name;
  std::vector<std::string> questions;  // the least, as paths; none of them exists
};

const std::vector<Row>& Rows() {
  static World& world = TheWorld();
  static const std::string list = world.InWork("feature_pack\\feature_pack_filelist.txt");
  static const std::vector<Row> rows = {
      {"pass 0, remembered", "media:images:translated_star.png", {}},
      {"pass 2, writable folder, remembered",
       "media:images:updated_star.png",
       {world.InWritable("en\\media\\images\\updated_star.png"), list,
        world.InWork("en\\media\\images\\updated_star.png")}},
      {"pass 2, work folder, remembered",
       "media:images:installed_star.png",
       {world.InWritable("en\\media\\images\\installed_star.png"), list,
        world.InWork("en\\media\\images\\installed_star.png"),
        world.InWritable("media\\images\\installed_star.png")}},
      {"pass 2, work folder, capital, remembered",
       "media:images:Installed_star.png",
       {world.InWritable("en\\media\\images\\Installed_star.png"), list,
        world.InWork("en\\media\\images\\Installed_star.png"),
        world.InWritable("en\\media\\images\\installed_star.png"),
        world.InWork("en\\media\\images\\installed_star.png"),
        world.InWritable("media\\images\\Installed_star.png")}},
      {"found nowhere",
       "media:images:nowhere_star.png",
       {world.InWritable("en\\media\\images\\nowhere_star.png"), list,
        world.InWork("en\\media\\images\\nowhere_star.png"),
        world.InWritable("media\\images\\nowhere_star.png"),
        world.InWork("media\\images\\nowhere_star.png")}},
  };
  return rows;
}

std::string Answer(const char* path) { return path == nullptr ? "(null)" : path; }

char AskLibrary(const char* name) {
  KelvarisPath resolver;
  const char* path = resolver.GetPath(name);
  return path == nullptr ? '\0' : path[0];
}

const kv::bench::Opaque kPlainPath(+[](Resolver& plain, const char* name, char* result) {
  return plain.GetPath(name, result);
});

// As AskLibrary: with a buffer of its own for the answer.
char AskPlain(Resolver& plain, const char* name) {
  const auto buffer = std::make_unique_for_overwrite<char[]>(Resolver::kPathSize);
  const char* path = kPlainPath(plain, name, buffer.get());
  return path == nullptr ? '\0' : path[0];
}

// What no form can undercut: the questions, the look-up of the remembered answer and its copy into
// a buffer from the heap.
class Limit {
 public:
  Limit(const Row& row, const std::map<int, std::string>& remembered) : remembered_(remembered) {
    for (const std::string& path : row.questions) {
      questions_.push_back(Ascii2Unicode(path.c_str(), true));
    }
    auto& world = TheWorld();
    const auto answer = world.Plain().GetPath(std::string(row.name));
    identifier_ = answer ? GetUniqueID(answer->c_str()) : 0;
  }
  char operator()() const {
    const auto buffer = std::make_unique_for_overwrite<char[]>(Resolver::kPathSize);
    for (const std::wstring& path : questions_) {
      benchmark::DoNotOptimize(::GetFileAttributesW(path.c_str()));
    }
    const auto found = remembered_.find(identifier_);
    if (found == remembered_.end()) return '\0';
    std::memcpy(buffer.get(), found->second.c_str(), found->second.size() + 1);
    benchmark::DoNotOptimize(buffer.get());
    return buffer[0];
  }

 private:
  const std::map<int, std::string>& remembered_;
  std::vector<std::wstring> questions_;
  int identifier_ = 0;
};

}  // namespace

void kv::bench::CheckAgreement() {
  World& world = TheWorld();
  world.Fill();
  KelvarisPath resolver;
  for (int repetition = 0; repetition < 2; ++repetition) {  // found, then remembered
    for (const Row& row : Rows()) {
      const auto plain = world.Plain().GetPath(std::string(row.name));
      Require(Answer(resolver.GetPath(row.name)) == plain.value_or("(null)"), row.name);
      Require(KelvarisPath::ms_FileNamesStorage == world.Plain().remembered, "what is remembered");
      for (const std::string& path : row.questions)
        Require(!ExistsPlainly(path.c_str()), path.c_str());
    }
  }
}

void kv::bench::RegisterComparisons() {
  Resolver& plain = TheWorld().Plain();
  for (const Row& row : Rows()) {
    Comparison(std::string("GetPath, ") + row.what)
        .Add("library", [&row] { return AskLibrary(row.name); })
        .Add("plain", [&row, &plain] { return AskPlain(plain, row.name); })
        .Add("limit questions, look-up, copy", Limit(row, plain.remembered));
  }
  // One answer is forgotten and found again; the others stay, for the operations above.
  const Row& forgotten = Rows()[2];
  const int identifier = GetUniqueID(plain.GetPath(std::string(forgotten.name))->c_str());
  Comparison("GetPath, pass 2, work folder, forgotten")
      .Add("library",
           [&forgotten, identifier] {
             KelvarisPath::ms_FileNamesStorage.erase(identifier);
             return AskLibrary(forgotten.name);
           })
      .Add("plain", [&forgotten, &plain, identifier] {
        plain.remembered.erase(identifier);
        return AskPlain(plain, forgotten.name);
      });
}
