// Download integrity: CRC-32, and a registry of the checksums of downloaded files that tells
// whether the content of a file is new.
//
// Texts are NUL-terminated UTF-8; null counts as empty. Objects belong to one thread at a time, and
// CheckFileVersion, which resolves data names, to the host's main thread. Nothing is thrown but
// std::bad_alloc and the MException that a declaration names.
#ifndef KVUTILS_UTILS_DOWNLOAD_DOWNLOAD_H_
#define KVUTILS_UTILS_DOWNLOAD_DOWNLOAD_H_

#include "utils/export.h"

#include <map>
#include <string>

// The CRC-32 of zlib, PNG and Ethernet: polynomial 0x04C11DB7 (IEEE 802.3), reflected, initial
// value and final complement 0xFFFFFFFF.
class KVUTILS_API crc32 {
 public:
  // Builds the table.
  crc32();

  // The checksum of `length` bytes; 0 when there are none, `length` is negative or `data` is null.
  // Calls are independent; any number of threads may share an object. The nine bytes "123456789"
  // give 0xCBF43926.
  [[nodiscard]] unsigned Get(const void* data, int length) const;

 private:
  unsigned m_Table[256];  // entry i: the remainder of the byte i
};

// Tells whether the content of files has changed since it was last seen.
//
// The registry file holds 8 bytes a file, without header: the identifier of its name (GetUniqueID,
// signed) and the checksum of its content, both 32 bits, least significant byte first, identifiers
// ascending. A registry without entries is a missing file. It is read once, from where
// KelvarisPath::GetPath finds it, and written to its place in the writable folder. Of two objects
// on one registry, the one that ends last leaves its entries.
//
// The name of a file is hashed as it is given: two spellings of one file are two entries.
//
// What resolves a data name throws as the constructor of KelvarisPath does (MException, code 0)
// while the folders of the process cannot be told: the constructor, WriteData, and IsNew with a
// data name.
class KVUTILS_API CheckFileVersion {
 public:
  // Reads the registry with this data name. One that cannot be resolved or opened, that memory is
  // short for, or whose length reads as negative (MFile::GetLength; from 2 GiB on), gives no
  // entries. Of two records with one identifier the first counts; a torn last record is read as if
  // zero bytes followed. Throws MException, code 2, when the system refuses to read.
  explicit CheckFileVersion(const char* registryName = "download:files_crc_sum.dat");
  CheckFileVersion(const CheckFileVersion&) = delete;
  CheckFileVersion& operator=(const CheckFileVersion&) = delete;
  // Writes the registry; a failure stays unknown.
  ~CheckFileVersion();

  // Whether the content of the file differs from what the registry holds for `name`; the registry
  // then holds the new checksum. `name` is a path, of any length, or else a data name. False,
  // changing nothing, when the file cannot be found or opened, memory is short for it, or its
  // length reads as negative: a file that has vanished is never new. Throws MException, code 2,
  // when the system refuses to read.
  bool IsNew(const char* name, bool isPath);

  // Records a checksum for a name that has no entry. Callers rely on it: an entry that is there
  // stays as it is.
  void AddFile(const char* name, unsigned crc);
  // Removes the entry of the name, if there is one.
  void RemoveFile(const char* name);
  // Removes all entries; the next write removes the file unless the system refuses.
  void DeleteData();

  // Writes the registry, making its folder if need be, or deletes its file when there are no
  // entries, unless the system refuses, as it does for a read-only one. A file that cannot be
  // opened stays as it is, though its folder has been made. Throws MException, code 2, when the
  // system refuses to write.
  void WriteData();

 private:
  std::string m_RegistryName;
  std::map<int, unsigned> m_Entries;  // checksums by identifier
};

#endif  // KVUTILS_UTILS_DOWNLOAD_DOWNLOAD_H_
