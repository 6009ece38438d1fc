// ZIP archives made by the tests, byte by byte: entries stored without compression.
#ifndef KVUTILS_TESTS_SUPPORT_ZIP_H_
#define KVUTILS_TESTS_SUPPORT_ZIP_H_

#include <string>
#include <vector>

namespace kv::test {

struct ZipEntry {
  std::string name;  // UTF-8, and said to be; "/" between folders and at the end of a folder
  std::string content;
  // The entry carries its time a second time, in an extra field, as archives of most programs do.
  bool hasExtraField = false;
};

// An archive of these entries, all last changed at 12:00 on 1 January 2020.
std::string ZipArchive(const std::vector<ZipEntry>& entries);

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_ZIP_H_
