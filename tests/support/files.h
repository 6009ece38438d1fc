// Files and folders as the tests see them: plain Windows calls, independent of the library under
// test. All paths are UTF-8 and absolute or relative to the current folder; any call that fails
// ends the test program with a message, because a test cannot go on without what it asked for.
#ifndef KVUTILS_TESTS_SUPPORT_FILES_H_
#define KVUTILS_TESTS_SUPPORT_FILES_H_

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kv::test {

std::wstring Widen(std::string_view utf8);
std::string Narrow(std::wstring_view utf16);

void WriteBytes(const std::string& path, std::string_view bytes);  // parents are created
std::string ReadBytes(const std::string& path);
void CreateFolders(const std::string& path);  // with all parents; existing ones are fine
bool FileExists(const std::string& path);
bool FolderExists(const std::string& path);
void RemoveFile(const std::string& path);
void RemoveTree(const std::string& path);  // read-only entries included; a missing folder is fine
// Of a file or folder: seconds since 1970 (UTC), and 100 ns ticks beyond them.
void SetTimes(const std::string& path, long long lastAccess, long long lastWrite, int ticks);
void MakeSparse(const std::string& path, long long size);  // a file of zeros that takes no room
void SetReadOnly(const std::string& path, bool readOnly);
bool IsReadOnly(const std::string& path);
void SetHidden(const std::string& path);

// The files and folders below `folder`, relative to it, sorted; folders end in "\".
std::vector<std::string> ListTree(const std::string& folder);

// The same with what can be told of each: its attributes, one letter each, and a file's content.
std::map<std::string, std::string> ReadTree(const std::string& folder);

std::string CurrentFolder();  // without a trailing "\" unless it is a root
void SetCurrentFolder(const std::string& path);

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_FILES_H_
