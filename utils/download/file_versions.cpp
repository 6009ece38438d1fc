#include "utils/download/download.h"

#include "utils/files/files.h"
#include "utils/internal/file_content.h"
#include "utils/internal/file_mode.h"
#include "utils/internal/text_view.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

namespace {

// Read-only after the library is loaded: any thread may use it.
const crc32 g_calculator;

// An entry as it stands in the registry file.
struct Record {
  std::int32_t identifier;
  std::uint32_t checksum;
};
static_assert(sizeof(Record) == 8 && std::endian::native == std::endian::little);

// The first record of an identifier counts. A torn last record is read as if zero bytes followed.
std::map<int, unsigned> ReadEntries(const kv::internal::FileContent& content) {
  std::map<int, unsigned> entries;
  for (std::size_t offset = 0; offset < content.size; offset += sizeof(Record)) {
    Record record = {};
    std::memcpy(&record, content.bytes.get() + offset,
                std::min(sizeof record, content.size - offset));
    entries.emplace_hint(entries.end(), record.identifier, record.checksum);
  }
  return entries;
}

std::vector<Record> RecordsOf(const std::map<int, unsigned>& entries) {
  std::vector<Record> records;
  records.reserve(entries.size());
  for (const auto& [identifier, checksum] : entries) records.push_back({identifier, checksum});
  return records;
}

}  // namespace

CheckFileVersion::CheckFileVersion(const char* registryName)
    : m_RegistryName(kv::internal::ViewOf(registryName)) {
  KelvarisPath resolver;
  const char* path = resolver.GetPath(m_RegistryName.c_str());
  if (path == nullptr) return;
  if (const auto content = kv::internal::ReadContent(path)) m_Entries = ReadEntries(*content);
}

CheckFileVersion::~CheckFileVersion() {
  try {
    WriteData();
  } catch (...) {
    // A destructor has no way to report: what the system refused to write stays unwritten.
  }
}

bool CheckFileVersion::IsNew(const char* name, bool isPath) {
  std::optional<KelvarisPath> resolver;  // owns the path that it answers with
  const char* path = isPath ? name : resolver.emplace().GetPath(name);
  if (path == nullptr) return false;
  const auto content = kv::internal::ReadContent(path);
  if (!content) return false;

  const unsigned checksum = g_calculator.Get(content->bytes.get(), static_cast<int>(content->size));
  // Callers rely on the name being hashed as it is given, not the path that it resolves to.
  const auto [entry, isAdded] = m_Entries.try_emplace(GetUniqueID(name), checksum);
  if (!isAdded && entry->second == checksum) return false;
  entry->second = checksum;
  return true;
}

void CheckFileVersion::AddFile(const char* name, unsigned crc) {
  m_Entries.try_emplace(GetUniqueID(name), crc);
}

void CheckFileVersion::RemoveFile(const char* name) { m_Entries.erase(GetUniqueID(name)); }

void CheckFileVersion::DeleteData() { m_Entries.clear(); }

void CheckFileVersion::WriteData() {
  KelvarisPath resolver;
  const char* path = resolver.GetWorkPath(m_RegistryName.c_str(), false, true);
  if (path == nullptr) return;
  CheckFileFolder(path);
  if (m_Entries.empty()) {
    MFile::DeleteFileA(path);
    return;
  }
  const std::vector<Record> records = RecordsOf(m_Entries);
  MFile file;
  if (!file.Open(path, kv::internal::file_mode::kCreateAnew)) return;
  file.Write(records.data(), static_cast<unsigned>(records.size() * sizeof(Record)));
}
