#include "utils/astro/astro.h"

#include "utils/files/files.h"
#include "utils/internal/file_mode.h"
#include "utils/paths/paths.h"

#include <algorithm>
#include <iterator>
#include <new>

// Process-wide and unguarded: one thread at a time. They are made before any instance of GetReader
// and outlive it, so that its destructor can save them.
std::vector<DwarfPlanetRecord> DwarfPlanetsIO::ms_DwarfPlanets;
bool DwarfPlanetsIO::ms_IsChanged = false;

namespace {

namespace file_mode = kv::internal::file_mode;

constexpr char kFileName[] = "catalogs:Planets&Moons:DwarfPlanets.bin";
constexpr unsigned kRecordSize = sizeof(DwarfPlanetRecord);

// The first record with this object number, or the end.
auto FindRecord(std::vector<DwarfPlanetRecord>& records, const SSO_ID& id) {
  return std::find_if(records.begin(), records.end(), [&id](const DwarfPlanetRecord& record) {
    return record.id.objectNumber == id.objectNumber;
  });
}

void Load(std::vector<DwarfPlanetRecord>& records) {
  KelvarisPath resolver;
  const char* path = resolver.GetPath(kFileName);
  MFile file;
  if (path == nullptr || !file.Open(path, file_mode::kRead)) return;
  try {
    DwarfPlanetRecord record;
    while (file.Read(&record, kRecordSize) == kRecordSize) records.push_back(record);
  } catch (const std::bad_alloc&) {
    records.clear();  // a part of them would be saved as the whole
    throw;
  }
}

void Save(const std::vector<DwarfPlanetRecord>& records) {
  KelvarisPath resolver;
  const char* path = resolver.GetWorkPath(kFileName, false, true);
  if (path == nullptr) return;
  CheckFileFolder(path);
  MFile file;
  if (!file.Open(path, file_mode::kCreateAnew)) {
    PrintDebugString("Can not create file %s\n", path);
    return;
  }
  for (const DwarfPlanetRecord& record : records) file.Write(&record, kRecordSize);
}

}  // namespace

DwarfPlanetsIO::DwarfPlanetsIO() {
  if (ms_DwarfPlanets.empty()) Load(ms_DwarfPlanets);
}

DwarfPlanetsIO::DwarfPlanetsIO(const DwarfPlanetsIO&) = default;

DwarfPlanetsIO& DwarfPlanetsIO::operator=(const DwarfPlanetsIO&) = default;

DwarfPlanetsIO::~DwarfPlanetsIO() {
  if (!ms_IsChanged) return;
  try {
    Save(ms_DwarfPlanets);
  } catch (...) {
    // A destructor has no way to report: what the system refused to write stays unwritten.
  }
}

bool DwarfPlanetsIO::Get(Elements* out, const SSO_ID& id) {
  const auto record = FindRecord(ms_DwarfPlanets, id);
  if (record == ms_DwarfPlanets.end()) return false;
  *out = record->elements;
  return true;
}

int DwarfPlanetsIO::Set(const DwarfPlanetRecord& rec) {
  const auto record = FindRecord(ms_DwarfPlanets, rec.id);
  if (record == ms_DwarfPlanets.end()) {
    ms_DwarfPlanets.push_back(rec);
  } else {
    *record = rec;
  }
  ms_IsChanged = true;
  return static_cast<int>(std::ssize(ms_DwarfPlanets));
}

DwarfPlanetsIO* GetReader() {
  static DwarfPlanetsIO reader;
  return &reader;
}
