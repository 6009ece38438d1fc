// Folders: making, searching, copying and deleting them.
#include <windows.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/faults/operations.h"
#include "tests/support/files.h"
#include "utils/paths/paths.h"

namespace kv::test {
namespace {

// Folders and files that are there afterwards, without those of other operations.
std::string TreeOf(const std::string& folder) {
  if (!FolderExists(folder)) return "none";
  std::string tree;
  for (const std::string& name : ListTree(folder)) tree += name + ",";
  return tree;
}

void RemoveFolders() {
  for (const char* folder : {"f", "g"}) RemoveTree(folder);
}

void MakeTree() {
  RemoveFolders();
  WriteBytes("f\\a.bin", "a");
  WriteBytes("f\\a_new.bin", "new");
  WriteBytes("f\\sub\\b.bin", "b");
}

// An absolute path, which goes through the root of the drive.
std::string MakeAbsoluteFolder() {
  MakeFolder((CurrentFolder() + "\\f\\g\\h").c_str());
  return TreeOf("f");
}

std::string MakeRelativeFolders() {
  MakeFolder("f");
  CheckFileFolder("g\\h\\a.txt");
  return TreeOf("f") + " " + TreeOf("g");
}

std::string GoToFolder() {
  const std::string old = CurrentFolder();
  const std::string there = old + "\\f";
  std::ostringstream told;
  told << ChangeFolder(there.c_str()) << ' ' << (CurrentFolder() == there);
  SetCurrentFolder(old);
  return told.str();
}

std::string FindRecursively() {
  FindFiles found("f", "g", "*.bin");
  found.Run(true);
  std::ostringstream told;
  for (unsigned i = 0; i < found.GetNumberFiles(); ++i) {
    told << found.GetSourceFile(i) << '=' << found.GetTargetFile(i) << ',';
  }
  return told.str();
}

std::string Rename() {
  RenameUpdatedFiles("f");
  return TreeOf("f") + " " + ContentOf("f\\a.bin");
}

std::string DeleteMasked() {
  SetReadOnly("f\\a.bin", true);
  DeleteFolder("f", "*.bin");
  const std::string tree = TreeOf("f");
  if (FileExists("f\\a.bin")) SetReadOnly("f\\a.bin", false);
  return tree;
}

std::string DeleteWhole() {
  DeleteFolder("f\\");
  return TreeOf("f");
}

std::string CopyOntoItself() {
  CopyFolder("x", (CurrentFolder() + "\\f").c_str(), nullptr);
  return TreeOf("f");
}

std::string CopyWhole() {
  CreateFolders("g");
  const std::wstring folder = Widen(CurrentFolder());
  std::ostringstream told;
  told << CopyDirTo(folder + L"\\f", folder + L"\\g") << ' ' << TreeOf("g");
  return told.str();
}

std::string CopyPaths() {
  CreateFolders("g");
  CopyFilesFromList({"f\\a.bin", "f\\none", "f\\sub\\b.bin"}, {"g\\1", "g\\2", "g\\3"});
  return TreeOf("g");
}

std::string CopyNames() {
  CopyFilesFromList({"a.bin", "sub\\b.bin"}, "f", "g");
  return TreeOf("g");
}

}  // namespace

std::vector<Operation> FolderOperations() {
  return {
      {"MakeFolder", RemoveFolders, MakeAbsoluteFolder, R"(g\,g\h\,)",
       R"(none|(g\\,)?(g\\h\\,)?(h\\,)?)"},
      {"CheckFileFolder", RemoveFolders, MakeRelativeFolders, R"( h\,)",
       R"((none|(h\\,)?) (none|(h\\,)?))"},
      {"ChangeFolder", MakeTree, GoToFolder, "0 1", "0 [01]|-1 0"},
      {"IsFolder", MakeTree, [] { return std::to_string(IsFolder("f")); }, "1", "[01]"},
      {"FindFiles", MakeTree, FindRecursively,
       R"(f\a.bin=g\a.bin,f\a_new.bin=g\a_new.bin,f\sub\b.bin=g\sub\b.bin,)",
       R"((f\\a\.bin=g\\a\.bin,)?(f\\a_new\.bin=g\\a_new\.bin,)?(f\\sub\\b\.bin=g\\sub\\b\.bin,)?)"},
      {"RenameUpdatedFiles", MakeTree, Rename, R"(a.bin,sub\,sub\b.bin, new)",
       R"(a\.bin,sub\\,sub\\b\.bin, new|a\.bin,a_new\.bin,sub\\,sub\\b\.bin, a)"},
      {"DeleteFolder, mask", MakeTree, DeleteMasked, R"(sub\,sub\b.bin,)",
       R"((a\.bin,)?(a_new\.bin,)?sub\\,sub\\b\.bin,)"},
      {"DeleteFolder", MakeTree, DeleteWhole, "none",
       R"(none|a\.bin,a_new\.bin,sub\\,sub\\b\.bin,)"},
      {"CopyFolder", MakeTree, CopyOntoItself, R"(a.bin,a_new.bin,sub\,sub\b.bin,)",
       R"(a\.bin,a_new\.bin,sub\\,sub\\b\.bin,)"},
      {"CopyDirTo", MakeTree, CopyWhole, R"(1 a.bin,a_new.bin,sub\,sub\b.bin,)",
       R"(1 a\.bin,a_new\.bin,sub\\,sub\\b\.bin,|0 )"},
      {"CopyFilesFromList, paths", MakeTree, CopyPaths, "1,3,", "(1,)?(3,)?"},
      {"CopyFilesFromList, names", MakeTree, CopyNames, R"(a.bin,sub\,sub\b.bin,)",
       R"(none|(a\.bin,)?(sub\\,)?(sub\\b\.bin,)?)"},
  };
}

}  // namespace kv::test
