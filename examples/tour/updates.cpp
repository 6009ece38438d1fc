#include "examples/tour/updates.h"

#include "examples/tour/format_text.h"
#include "examples/tour/installation.h"
#include "examples/tour/section.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

#include <algorithm>
#include <vector>

namespace tour {
namespace {

constexpr char kFolder[] = "catalogs\\Planets&Moons\\";
constexpr char kFolderName[] = "catalogs:Planets&Moons:";

std::string FileName(const std::string& path) { return path.substr(path.rfind('\\') + 1); }

// "Jupiter 95, Saturn 146": the rows of the table.
std::string TableText(const std::string& dataName) {
  std::string text;
  for (const Row& row : RequireRows(dataName.c_str())) {
    text += (text.empty() ? "" : ", ") + ColumnOf(row, 0) + " " + ColumnOf(row, 1);
  }
  return text;
}

// A line for each file of the folder, in the order of their names.
std::string FolderText(const char* occasion, const std::string& folder) {
  FindFiles search(folder.c_str(), "*.txt");
  search.Run(false);
  std::vector<std::string> names;
  for (unsigned i = 0; i < search.GetNumberFiles(); ++i) {
    names.push_back(FileName(search.GetSourceFile(i)));
  }
  std::sort(names.begin(), names.end());
  std::string text;
  for (const std::string& name : names) {
    text += "  " + Padded(text.empty() ? occasion : "", 9) + Padded(name, 16) +
            TableText(kFolderName + name) + "\n";
  }
  return text;
}

}  // namespace

std::string UpdateText(const Workshop& workshop) {
  const std::string folder = workshop.Folder() + kFolder;
  const std::string file = workshop.Bring(kMoonsName, std::string(kFolder) + "Moons.txt");
  const std::string update = GetTempFileNameForDbUpdate("Moons.txt");
  workshop.Bring(kNewMoonsName, kFolder + update);

  std::string text = FolderText("before", folder);
  RenameUpdatedFiles(folder.c_str());
  KelvarisPath::ClearFileNamesStorage();
  text += FolderText("after", folder);

  KelvarisPath resolver;
  if (MFile::IsExist((folder + update).c_str()) ||
      FileCompare(file.c_str(), resolver.GetPath(kNewMoonsName)) != 0) {
    throw Failure("the update " + folder + update + " cannot be installed");
  }
  return text;
}

}  // namespace tour
