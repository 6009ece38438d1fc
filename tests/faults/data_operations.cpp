// Data names and what is kept under them: lists, places, the registry, the records.
#include <algorithm>
#include <cstring>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "tests/faults/operations.h"
#include "tests/support/files.h"
#include "utils/astro/astro.h"
#include "utils/download/download.h"
#include "utils/extra/path_explanation.h"
#include "utils/paths/paths.h"

namespace kv::test {
namespace {

std::string InDocuments(const std::string& name) {
  return DocumentsFolder() + "\\Kelvaris_9\\" + name;
}

std::string workFolder;  // ends in "\"

// A folder of the case as "W:" (work) or "U:" (user's), so that outcomes do not name the sandbox.
std::string Short(const char* path) {
  if (path == nullptr) return "null";
  const std::string text = path;
  if (text.starts_with(workFolder)) return "W:" + text.substr(workFolder.size());
  const std::string users = InDocuments("");
  if (text.starts_with(users)) return "U:" + text.substr(users.size());
  return text;
}

std::string Listed(const std::vector<std::string>& lines) {
  std::string text = "[";
  for (const std::string& line : lines) text += line + ",";
  return text + "]";
}

void MakeInstallation() {
  workFolder = CurrentFolder() + "\\";
  if (FileExists("media\\fileutils.ini")) return;
  WriteBytes("media\\fileutils.ini", "m1\nm2\n}\nt1\n}\nw1\nw2\n}\n");
  WriteBytes("media\\supported_languages.ini", "en\nde\n");
  WriteBytes("media\\star.bmp", "b");
  WriteBytes("catalogs\\a.txt", "a");
  WriteBytes("feature_pack\\feature_pack_filelist.txt", "pack\\\nCatalogs:Extra.txt\nmedia:b\n");
  WriteBytes("pack\\catalogs\\extra.txt", "x");
}

// The same with the folders found, so that what fails is the operation's own.
void MakeKnownInstallation() {
  MakeInstallation();
  const KelvarisPath resolver;
}

std::string Discover() {
  const KelvarisPath resolver;
  return Short(KelvarisPath::ms_WorkDir) + " " + Short(KelvarisPath::ms_WritablePath) + " " +
         Listed(KelvarisPath::ms_CDFolders) + Listed(KelvarisPath::ms_ThemePaths) +
         Listed(KelvarisPath::ms_WritablePaths);
}

std::string Resolve() {
  KelvarisPath resolver;
  std::ostringstream told;
  told << Short(resolver.GetPath("catalogs:a.txt")) << ' '
       << Short(resolver.GetPath("catalogs:Extra.txt")) << ' '
       << Short(resolver.CheckPath("media:star.bmp", nullptr)) << ' '
       << Short(resolver.GetWorkPath("x:y", false, true)) << ' '
       << Short(resolver.GetWorkPath("x:y", true, false));
  return told.str();
}

void MakeShadow() {
  MakeKnownInstallation();
  WriteBytes("media\\hidden.bmp", "b");
  WriteBytes(InDocuments("media\\hidden.bmp"), "other");
}

std::string Explain() {
  const kv::PathExplanation why = kv::ExplainPath("catalogs:Extra.txt");
  const auto there = std::count_if(why.candidates.begin(), why.candidates.end(),
                                   [](const kv::PathCandidate& place) { return place.exists; });
  std::ostringstream told;
  told << why.winner << ' ' << Short(why.answer.c_str()) << ' ' << there << ' '
       << kv::ListShadowed("media").size();
  return told.str();
}

void MakeNoPlaces() {
  MakeKnownInstallation();
  RemoveTree(InDocuments("catalogs"));
}

std::string FindPlaces() {
  char place[260] = "-";
  std::string image = "-";
  std::ostringstream told;
  told << GetWorkPathForDBfiles(place, "catalogs:a.txt") << ' ' << Short(place) << ' '
       << FolderExists(InDocuments("catalogs")) << ' ';
  told << GetImageFilePath(image, "media:star.png", "dark") << ' ' << Short(image.c_str());
  return told.str();
}

void MakeUsersFolder() {
  MakeKnownInstallation();
  WriteBytes(InDocuments("media\\c.txt"), "c");
}

std::string RemoveUsersFolder() {
  deleteUserFolderContent();
  return std::to_string(FolderExists(InDocuments("")));
}

// What the descriptors name, and a file that they do not.
constexpr const char* kParts[] = {"media\\a.txt", "media\\b.txt", "en\\media\\a.txt",
                                  "catalogs\\c.txt"};

void MakeParts() {
  MakeKnownInstallation();
  for (const char* name : kParts) WriteBytes(InDocuments(name), "x");
}

std::string RemoveParts() {
  const char* const descriptors[] = {"all;media;delete;a.txt", "base;catalogs"};
  KvFoldersRemover(descriptors, 2).Run();
  std::string left;
  for (const char* name : kParts) {
    left += FileExists(InDocuments(name)) ? '1' : '0';
  }
  return left;
}

const std::string kRegistry = "download\\files_crc_sum.dat";

void MakeRegistry() {
  MakeKnownInstallation();
  WriteBytes(InDocuments(kRegistry), std::string("\x01\0\0\0\x02\0\0\0", 8));
}

std::string SizeOf(const std::string& path) {
  return FileExists(path) ? std::to_string(ReadBytes(path).size()) : "none";
}

std::string UseRegistry() {
  std::ostringstream told;
  {
    CheckFileVersion versions;
    told << versions.IsNew("catalogs:a.txt", false) << versions.IsNew("catalogs\\a.txt", true);
    versions.WriteData();
    told << ' ' << SizeOf(InDocuments(kRegistry));
    versions.DeleteData();
  }
  told << ' ' << SizeOf(InDocuments(kRegistry));
  return told.str();
}

const std::string kRecords = "catalogs\\Planets&Moons\\DwarfPlanets.bin";

void MakeRecords() {
  MakeKnownInstallation();
  WriteBytes(InDocuments(kRecords), std::string(2 * sizeof(DwarfPlanetRecord), 'r'));
}

std::string UseRecords() {
  std::ostringstream told;
  {
    DwarfPlanetsIO records;
    told << DwarfPlanetsIO::ms_DwarfPlanets.size() << ' ';
    DwarfPlanetRecord record = {};
    record.id.objectNumber = 7;
    told << records.Set(record);
  }
  told << ' ' << SizeOf(InDocuments(kRecords));
  return told.str();
}

}  // namespace

std::vector<Operation> DataOperations() {
  const std::string noFolders = "|MException 0: KelvarisPath::GetCDPath return false";
  const std::string anyError = noFolders + "|MException 2: MFile::(Read|Write) - .* in file .*";
  return {
      {"KelvarisPath", MakeInstallation, Discover, "W: U: [m1,m2,][t1,][w1,w2,]",
       R"(W: (U:|\\Kelvaris_9\\|) \[(m1,)?(m2,)?\]\[(t1,)?\]\[(w1,)?(w2,)?\])" + noFolders},
      {"KelvarisPath, questions", MakeKnownInstallation, Resolve,
       R"(W:catalogs\a.txt W:pack\catalogs\extra.txt W:media\star.bmp U:x\y null)",
       R"((W:catalogs\\a\.txt|null) (W:pack\\catalogs\\extra\.txt|null) (W:media\\star\.bmp|null) )"
       R"((U:|\\Kelvaris_9\\)?x\\y null)" +
           noFolders},
      {"ExplainPath and ListShadowed", MakeShadow, Explain, R"(5 W:pack\catalogs\extra.txt 2 1)",
       R"((5 W:pack\\catalogs\\extra\.txt|7 W:pack\\catalogs\\extra\.txt|-1 ) [0-2] [01])" +
           anyError},
      {"GetWorkPathForDBfiles", MakeNoPlaces, FindPlaces,
       R"(1 U:catalogs\a.txt 1 1 W:media\star.bmp)",
       R"((0 -|1 (U:|\\Kelvaris_9\\)?catalogs\\a\.txt) [01] (0 -|1 W:media\\star\.bmp))" +
           noFolders},
      {"deleteUserFolderContent", MakeUsersFolder, RemoveUsersFolder, "0", "[01]" + noFolders},
      {"KvFoldersRemover", MakeParts, RemoveParts, "0100", "[01]1[01][01]" + noFolders},
      {"CheckFileVersion", MakeRegistry, UseRegistry, "11 24 none",
       "[01][01] (8|16|24|none) (8|16|24|none)" + anyError},
      {"DwarfPlanetsIO", MakeRecords, UseRecords, "2 3 228",
       "[0-2] [1-3] (76|152|228|0)" + anyError},
  };
}

}  // namespace kv::test
