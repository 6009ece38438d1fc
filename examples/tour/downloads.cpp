#include "examples/tour/downloads.h"

#include "examples/tour/format_text.h"
#include "examples/tour/installation.h"
#include "examples/tour/section.h"
#include "utils/download/download.h"
#include "utils/files/files.h"

#include <cstdio>
#include <memory>

namespace tour {
namespace {

constexpr char kDownloadName[] = "download:Moons.txt";
constexpr char kRegistryName[] = "download:files_crc_sum.dat";

std::string Content(const std::string& path) {
  std::string content;
  if (loadUTF8StringFromFile(content, path.c_str())) return content;
  throw Failure(path + " cannot be read");
}

// Asks the registry, which is written when it goes: the next call reads it from the disk.
bool IsNewFile() {
  CheckFileVersion registry(kRegistryName);
  return registry.IsNew(kDownloadName, false);
}

std::string Check(const char* occasion, const std::string& path) {
  const bool isNew = IsNewFile();
  const std::string content = Content(path);
  const unsigned checksum = crc32().Get(content.data(), static_cast<int>(content.size()));
  return FormatText("  %s %s%5zu bytes   CRC-32 %08X   %s\n", kDownloadName,
                    Padded(occasion, 22).c_str(), content.size(), checksum,
                    isNew ? "new" : "known");
}

void AppendLine(const std::string& path, const char* line) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(mm_fopen(path.c_str(), "ab"),
                                                             std::fclose);
  if (!file || std::fputs(line, file.get()) < 0) throw Failure(path + " cannot be written");
}

std::string HexText(const unsigned char* bytes, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += FormatText(i == 0 ? "%02X" : " %02X", bytes[i]);
  return text;
}

// The registry of one file.
std::string RegistryText(const std::string& path) {
  constexpr unsigned kReadMode = 2;
  constexpr unsigned kRecordSize = 8;  // an identifier and a checksum, of four bytes each
  unsigned char bytes[kRecordSize + 1] = {};
  MFile file;
  if (!file.Open(path.c_str(), kReadMode) || file.Read(bytes, sizeof bytes) != kRecordSize) {
    throw Failure("the registry of downloads cannot be written: " + path);
  }
  return FormatText("  The registry %s has %u bytes: %s, the identifier of the\n", kRegistryName,
                    kRecordSize, HexText(bytes, 4).c_str()) +
         FormatText("  name, and %s, the checksum of what had arrived; lowest bytes first.\n",
                    HexText(bytes + 4, 4).c_str());
}

}  // namespace

std::string DownloadText(const Workshop& workshop) {
  const std::string download = workshop.Bring(kNewMoonsName, "download\\Moons.txt");
  std::string text = Check("has arrived", download);
  const std::string registry = RegistryText(workshop.Folder() + "download\\files_crc_sum.dat");
  text += Check("is asked about again", download);
  AppendLine(download, "Mars\t2\n");
  text += Check("has got one line more", download);
  return text + registry;
}

}  // namespace tour
