// Binary files: the registry of downloads, the store of dwarf planets, and files taken whole. Each
// is checked for what is read from any bytes, and for what is written back.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "tests/fuzz/support/target.h"
#include "tests/reference/crc32.h"
#include "tests/reference/identifiers.h"
#include "tests/support/files.h"
#include "utils/astro/astro.h"
#include "utils/download/download.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

namespace kv::fuzz {
namespace {

// A new content for a file of the installation, of which the writable folder has no copy.
std::string WriteAnew(const std::string& place, std::string_view content) {
  const KelvarisPath resolver;
  const std::string written = KelvarisPath::ms_WritablePath + place;
  if (test::FileExists(written)) test::RemoveFile(written);
  test::WriteBytes(place, content);
  KelvarisPath::ClearFileNamesStorage();
  return written;
}

template <typename Value>
Value ValueAt(std::string_view bytes, std::size_t offset) {
  Value value{};
  bytes = bytes.substr(std::min(offset, bytes.size()), sizeof value);
  std::memcpy(&value, bytes.data(), bytes.size());
  return value;
}

template <typename Value>
std::string BytesOf(const Value& value) {
  return {reinterpret_cast<const char*>(&value), sizeof value};
}

using Entries = std::map<int, unsigned>;

Entries EntriesOf(std::string_view bytes) {
  Entries entries;
  for (std::size_t i = 0; i < bytes.size(); i += 8) {
    entries.emplace(ValueAt<int>(bytes, i), ValueAt<unsigned>(bytes, i + 4));
  }
  return entries;
}

void Use(CheckFileVersion& registry, Entries& entries, Input& input) {
  const std::string name = input.OneOf({"table.txt", "a", "download:stars.bin"});
  const int identifier = reference::UniqueId(name.c_str());
  const unsigned crc = input.Take<unsigned char>();
  switch (input.Below(4)) {
    case 0:
      registry.AddFile(name.c_str(), crc);
      entries.emplace(identifier, crc);
      break;
    case 1:
      registry.RemoveFile(name.c_str());
      entries.erase(identifier);
      break;
    case 2:
      registry.DeleteData();
      entries.clear();
      break;
    default: {
      const std::string content(1, static_cast<char>(crc));
      test::WriteBytes("content", content);
      const unsigned checksum = reference::Crc32(content.data(), content.size());
      const int place = reference::UniqueId("content");
      const bool isNew = !entries.contains(place) || entries[place] != checksum;
      Expect("whether new", registry.IsNew("content", true), isNew);
      entries[place] = checksum;
    }
  }
}

void CheckRegistry(Input input) {
  std::string uses;
  for (std::size_t count = input.Below(12); count > 0; --count) uses += input.Take<char>();
  const std::string_view content = input.Rest();
  const std::string written = WriteAnew("download\\files_crc_sum.dat", content);
  Entries entries = EntriesOf(content);
  {
    CheckFileVersion registry;
    for (Input rest(uses); !rest.IsUsedUp();) Use(registry, entries, rest);
  }
  std::string expected;
  for (const auto& [identifier, crc] : entries) expected += BytesOf(identifier) + BytesOf(crc);
  Expect("whether a file is written", test::FileExists(written), !entries.empty());
  if (!entries.empty()) Expect("written", test::ReadBytes(written), expected);
}

using Records = std::vector<DwarfPlanetRecord>;

Records RecordsOf(std::string_view bytes) {
  Records records;
  for (std::size_t i = 0; i + sizeof(DwarfPlanetRecord) <= bytes.size();
       i += sizeof(DwarfPlanetRecord)) {
    records.push_back(ValueAt<DwarfPlanetRecord>(bytes, i));
  }
  return records;
}

std::string BytesOfAll(const Records& records) {
  std::string bytes;
  for (const DwarfPlanetRecord& record : records) bytes += BytesOf(record);
  return bytes;
}

void Use(DwarfPlanetsIO& store, Records& records, Input& input) {
  DwarfPlanetRecord record = {};
  record.elements.bytes[0] = input.Take<unsigned char>();
  record.id = {input.Take<unsigned char>(), input.Take<unsigned char>()};
  if (input.Flag() && !records.empty()) record.id.objectNumber = records.back().id.objectNumber;
  const auto place = std::find_if(records.begin(), records.end(), [&](const auto& other) {
    return other.id.objectNumber == record.id.objectNumber;
  });
  if (input.Flag()) {
    Elements elements = record.elements;
    Expect("whether there", store.Get(&elements, record.id), place != records.end());
    Expect("elements", BytesOf(elements),
           BytesOf(place == records.end() ? record.elements : place->elements));
    return;
  }
  if (place == records.end()) {
    records.push_back(record);
  } else {
    *place = record;
  }
  Expect("records", store.Set(record), static_cast<int>(records.size()));
}

void CheckDwarfPlanets(Input input) {
  std::string uses;
  for (std::size_t count = input.Below(20); count > 0; --count) uses += input.Take<char>();
  const std::string_view content = input.Rest();
  const std::string written = WriteAnew("catalogs\\Planets&Moons\\DwarfPlanets.bin", content);
  DwarfPlanetsIO::ms_DwarfPlanets.clear();
  DwarfPlanetsIO::ms_IsChanged = false;
  Records records = RecordsOf(content);
  {
    DwarfPlanetsIO store;
    Expect("loaded", BytesOfAll(DwarfPlanetsIO::ms_DwarfPlanets), BytesOfAll(records));
    for (Input rest(uses); !rest.IsUsedUp();) Use(store, records, rest);
  }
  Expect("whether a file is written", test::FileExists(written), DwarfPlanetsIO::ms_IsChanged);
  if (DwarfPlanetsIO::ms_IsChanged)
    Expect("written", test::ReadBytes(written), BytesOfAll(records));
  DwarfPlanetsIO::ms_IsChanged = false;
}

int Sign(int number) { return (number > 0 ? 1 : 0) - (number < 0 ? 1 : 0); }

void CheckSearch(const std::string& content, const std::string& pattern, std::size_t start) {
  MFile file("first", 2);
  file.Seek(0, static_cast<int>(start));
  // No piece that is read is as long as the file here, so no match lies across two.
  const std::size_t found =
      start >= content.size() ? std::string::npos : content.find(pattern, start);
  const auto* const bytes = reinterpret_cast<const unsigned char*>(pattern.data());
  const auto size = static_cast<unsigned>(pattern.size());
  Expect("whether found", file.Search(bytes, size, false), found != std::string::npos);
  Expect("place", std::size_t{file.GetFilePointer()},
         found == std::string::npos ? start : found + pattern.size());
}

void CheckWholeFiles(Input input) {
  const std::size_t start = input.Below(256);
  const std::string pattern = input.Text();
  const std::string first(input.Until('\xFE'));
  const std::string second(input.Rest());
  test::WriteBytes("first", first);
  test::WriteBytes("second", second);
  const int difference = FileCompare("first", "second");
  if (first.size() != second.size()) {
    Expect("difference", difference,
           static_cast<int>(first.size()) - static_cast<int>(second.size()));
  } else {
    Expect("order", Sign(difference), Sign(first.compare(second)));
  }
  if (!first.empty()) CheckSearch(first, pattern.empty() ? "x" : pattern, start);
  Expect("copied", MFile::FileCopy("first", "second"), !first.empty());
  std::string copied = second;
  copied.replace(0, std::min(first.size(), copied.size()), first);
  Expect("copy", test::ReadBytes("second"), copied);
  Expect("united", UniteFiles("second", "first"), true);
  Expect("union", test::ReadBytes("second"), copied + first);
}

std::string Record(unsigned number) {
  DwarfPlanetRecord record = {};
  record.id.objectNumber = number;
  return BytesOf(record);
}

const Registration kRegistry(
    {.name = "registry",
     .check = CheckRegistry,
     .seeds = {std::string("\1\0\0\0\x43\xBE\xB7\xE8\2\0\0\0\0\0\0\0\0\3\7\3\1\5\6", 23),
               std::string("\xFF\xFF\xFF\x7F....\xFF\xFF\xFF\x7F,,,,torn\0", 21)},
     .words = {std::string("\1\0\0\0", 4)},
     .count = 500});

const Registration kDwarfPlanets({.name = "dwarf_planets",
                                  .check = CheckDwarfPlanets,
                                  .seeds = {Record(134340) + Record(136199) +
                                                "\1\2\3\4\5\6\7\x8\x8",
                                            Record(1) + Record(1) + "torn\1"},
                                  .words = {Record(2)},
                                  .maxSize = 1024,
                                  .count = 500});

const Registration kWholeFiles({.name = "whole_files",
                                .check = CheckWholeFiles,
                                .seeds = {std::string("ab\0first abab\xFEsecond ab\2", 25),
                                          std::string("\0same\xFEsame\1", 11)},
                                .words = {"\xFE"},
                                .count = 500});

}  // namespace
}  // namespace kv::fuzz
