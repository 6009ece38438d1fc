#include "examples/tour/archive.h"

#include "examples/tour/format_text.h"
#include "examples/tour/installation.h"
#include "examples/tour/section.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"
#include "utils/platform/platform.h"

#include <algorithm>
#include <vector>

namespace tour {
namespace {

constexpr char kArchive[] = "download\\constellations.zip";
constexpr char kUnpacked[] = "unpacked\\";

// A line for each unpacked file, in the order of their paths. How the program fared shows in the
// files alone.
std::vector<std::string> Lines(const std::string& folder) {
  FindFiles search(folder.c_str(), "<your folder>", "*.txt");
  search.Run(true);
  std::vector<std::string> lines;
  for (unsigned i = 0; i < search.GetNumberFiles(); ++i) {
    const std::string file = search.GetSourceFile(i);
    std::string content;
    if (!loadUTF8StringFromFile(content, file.c_str())) {
      throw Failure("unzip.exe has made no text of " + file.substr(folder.size()) + " in " +
                    kArchiveName);
    }
    lines.push_back("  " + Padded(file.substr(folder.size()), 29) +
                    FormatText("%4zu bytes   ", content.size()) + search.GetTargetFile(i) + "\n");
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

}  // namespace

std::string ArchiveText(const Workshop& workshop, const std::string& plainFolder) {
  workshop.Bring(kArchiveName, kArchive);
  if (plainFolder.empty()) {
    return "  Left packed: unzip.exe is given its paths without quotes, and there is no plain one "
           "to " +
           workshop.Folder() + "\n";
  }
  if (!UnzipFile((plainFolder + kArchive).c_str(), (plainFolder + kUnpacked).c_str())) {
    throw Failure("unzip.exe cannot be started: it is not in this folder, nor on the search path");
  }
  const std::vector<std::string> lines = Lines(workshop.Folder() + kUnpacked);
  if (lines.empty()) {
    throw Failure(std::string("unzip.exe has unpacked nothing from ") + kArchiveName);
  }

  std::string text =
      FormatText("  unzip.exe has unpacked %zu files from %s:\n", lines.size(), kArchiveName);
  for (const std::string& line : lines) text += line;
  return text;
}

}  // namespace tour
