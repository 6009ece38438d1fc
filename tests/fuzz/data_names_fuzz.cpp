// Data names of any kind beside the defining form of the resolver, on trees that the input tells
// of.
#include <cstring>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "tests/paths/noted_disk.h"
#include "tests/reference/resolver.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

using reference::Resolver;
using test::NotedDisk;
using Texts = std::vector<std::string>;

constexpr char kNone[] = "(null)";
constexpr char kWork[] = "C:\\work\\";
constexpr char kWritable[] = "C:\\user\\";

std::string Answer(const char* path) { return path == nullptr ? kNone : path; }

// The process's folders found once, and from then on a disk in place of the system's.
void UseNotedDisk() {
  static const KelvarisPath first;
  static const NotedDisk disk("none");
}

// A text that the disk can be asked for.
bool IsWellFormed(const std::string& text) {
  int size = 0;
  return utf8_to_utf16(nullptr, size, text.data(), static_cast<int>(text.size())) != -2;
}

struct World {
  Resolver plain;
  std::set<std::string> paths;

  explicit World(Input& input) {
    plain.workFolder = kWork;
    plain.writableFolder = kWritable;
    plain.languageFolder = input.OneOf({"en", "en", "", "EN", "de:x", ":"});
    for (std::size_t count = input.Below(4); count > 0; --count) {
      plain.addOnNames.push_back(
          Resolver::LowerCase(Resolver::WithBackslashes(std::string(input.Until('\n')))));
    }
    plain.addOnFolder = input.OneOf({"pack\\", "", "a:"});
    for (std::size_t count = input.Below(8); count > 0; --count) {
      const std::string name(input.Until('\n'));
      paths.insert(Resolver::Join(input.Flag() ? kWork : kWritable, name));
      paths.insert(Resolver::Join(kWork, plain.addOnFolder + Resolver::LowerCase(name)));
    }
    plain.exists = [this](const std::string& path) { return paths.contains(path); };
    plain.readList = [](const char*) { return Texts(); };
  }

  void Give() const {
    std::strcpy(KelvarisPath::ms_WorkDir, kWork);
    std::strcpy(KelvarisPath::ms_CDPath, kWork);
    std::strcpy(KelvarisPath::ms_WritablePath, kWritable);
    KelvarisPath::ms_LanguageFolder = plain.languageFolder;
    KelvarisPath::ms_FileNamesStorage.clear();
    KelvarisPath::sFeaturePackFolder = plain.addOnFolder;
    KelvarisPath::sFeaturePackFileNames = plain.addOnNames;
    NotedDisk::Hold(paths);
  }
};

void CheckWorkPath(KelvarisPath& resolver, const World& world, const std::string& name,
                   bool mustExist, bool inWritable) {
  const auto path = [&](const char* folder) { return Resolver::Join(folder, name); };
  std::string expected = path(inWritable ? kWritable : kWork);
  if (!name.empty() && world.paths.contains(path(kWritable))) expected = path(kWritable);
  const bool isThere = expected.size() < 260 && (!mustExist || world.paths.contains(expected));
  const GuardedText guarded(name);
  KelvarisPath::ClearFileNamesStorage();
  Expect("where to write", Answer(resolver.GetWorkPath(guarded.Get(), mustExist, inWritable)),
         isThere ? expected : kNone);
  const std::string onMedium = kWork + name;
  const std::string inWork =
      !name.empty() && world.paths.contains(path(kWritable)) ? path(kWritable) : path(kWork);
  const GuardedText guardedMedium(onMedium);
  Expect("from the medium", Answer(resolver.FromCDtoWorkPath(guardedMedium.Get())),
         inWork.size() < 260 ? inWork : kNone);
}

void Check(Input input) {
  UseNotedDisk();
  const bool mustExist = input.Flag();
  const bool inWritable = input.Flag();
  World world(input);
  world.Give();
  std::string name = input.Text();
  // The disk does not see a text that is no UTF-8, nor one with a NUL; the plain form would.
  if (!IsWellFormed(name)) {
    for (char& c : name) c = static_cast<char>(c & 0x7F);
    name = name.c_str();
  }
  KelvarisPath resolver;
  const GuardedText guarded(name);
  const std::optional<std::string> expected =
      name.size() < 520 ? world.plain.GetPath(name) : std::nullopt;
  Expect("path", Answer(resolver.GetPath(guarded.Get())), expected.value_or(kNone));
  ExpectThat("the same is remembered", KelvarisPath::ms_FileNamesStorage == world.plain.remembered);
  Expect("path again", Answer(resolver.GetPath(guarded.Get())), expected.value_or(kNone));
  if (name.find(kWork) == std::string::npos) {
    CheckWorkPath(resolver, world, name, mustExist, inWritable);
  }
}

// The answer of the resolver for each name that an image may have, in their order.
std::string FindImage(World& world, const std::string& name, const char* subFolder) {
  Texts names = {name};
  const std::size_t colon = name.rfind(':');
  if (subFolder != nullptr && colon == std::string::npos) names.insert(names.begin(), name);
  if (subFolder != nullptr && colon != std::string::npos) {
    names.insert(names.begin(),
                 name.substr(0, colon) + ":" + subFolder + ":" + name.substr(colon + 1));
  }
  for (std::string& image : names) {
    for (const char* const extension : {".png", ".bmp"}) {
      if (extension[1] == 'b') {
        const std::size_t place = image.find(".png");
        if (place == std::string::npos) return "invalid string position";
        image.replace(place, 4, extension);
      }
      const auto path = image.size() < 520 ? world.plain.GetPath(image) : std::nullopt;
      if (path) return *path;
    }
  }
  return kNone;
}

std::string AnswerOfImage(const char* name, const char* subFolder) {
  std::string path = kNone;
  try {
    const bool isFound = GetImageFilePath(path, name, subFolder);
    ExpectThat("the path is told when it is found", isFound == (path != kNone));
  } catch (const std::out_of_range& exception) {
    Expect("path before an exception", path, std::string(kNone));
    return exception.what();
  }
  return path;
}

// One of the names that an image may have, and perhaps the same in the language, is there.
void PlaceImage(Input& input, World& world, const std::string& name, const std::string& subFolder) {
  std::string image = name;
  const std::size_t colon = name.rfind(':');
  if (input.Flag() && colon != std::string::npos) image.insert(colon, ":" + subFolder);
  const std::size_t extension = image.find(".png");
  if (input.Flag() && extension != std::string::npos) image.replace(extension, 4, ".bmp");
  if (input.Flag()) image = world.plain.languageFolder + ":" + image;
  world.paths.insert(Resolver::Join(input.Flag() ? kWork : kWritable, image));
}

void CheckImages(Input input) {
  UseNotedDisk();
  const bool hasSubFolder = input.Flag();
  World world(input);
  std::string texts[] = {input.Text(), input.Text()};
  for (std::string& text : texts) {
    for (char& c : text) c = static_cast<char>(c & 0x7F);
    text = text.c_str();
  }
  const auto& [name, subFolder] = texts;
  if (input.Flag()) PlaceImage(input, world, name, subFolder);
  world.Give();
  const GuardedText guarded(name);
  const GuardedText guardedFolder(subFolder);
  Expect("image", AnswerOfImage(guarded.Get(), hasSubFolder ? guardedFolder.Get() : nullptr),
         FindImage(world, name, hasSubFolder ? subFolder.c_str() : nullptr));
  ExpectThat("the same is remembered", KelvarisPath::ms_FileNamesStorage == world.plain.remembered);
}

const Registration kImages(
    {.name = "images",
     .check = CheckImages,
     .seeds = {std::string("media:icons:star.png\0dark\0\0\0\0\1\1\0\0\0\0\1", 36),
               std::string("media:icons:star.png\0dark\0\1\0\1\0\1\0\0\0\0\1", 36),
               std::string("media:icons:star.png\0dark\0\0\0\0\0\0\0\0\0\0\0", 36),
               std::string("media:star.png\nmedia:star.png\0\0\0\1\1\0\0\0\0", 38),
               std::string("star.gif\0x\0\0\0\0\0\0\0\0\0\0\1", 21)},
     .words = {".png", ".bmp", ":", "media:", "\n", std::string(1, '\0')},
     .maxSize = 700});

const Registration kTarget(
    {.name = "data_names",
     .check = Check,
     .seeds =
         {"catalogs:Stars:Hip.bin\ncatalogs:Stars:Hip.bin\ncatalogs:Stars:Hip.bin\1\1\2\1\0\0\1",
          "en:media\\find\nen:media\\find\nMedia/Find\1\1\3\2\1\2\0\1\0",
          "a:b\na:B\nA:b\1\2\2\1\1\1"},
     .words = {"en:", "en\\", "EN", "pack\\", "\n", "catalogs:", "a"},
     .maxSize = 700});

}  // namespace
}  // namespace kv::fuzz
