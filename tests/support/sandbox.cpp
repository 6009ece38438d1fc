#include "tests/support/sandbox.h"

#include <shlobj.h>
#include <windows.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "tests/support/process.h"

namespace kv::test {
namespace {

// The folder below which all sandboxes stand: a Unix path in the environment, seen through drive Z.
std::string SandboxRoot() {
  std::string path = Environment("KVUTILS_SANDBOX_ROOT");
  if (path.empty()) {
    std::fprintf(stderr, "KVUTILS_SANDBOX_ROOT is not set: run the tests through ./kv test\n");
    std::exit(99);
  }
  std::replace(path.begin(), path.end(), '/', '\\');
  if (path.front() == '\\') path.insert(0, "Z:");
  return path + "\\";
}

void RequireDocuments(const std::string& expected) {
  wchar_t path[MAX_PATH] = L"";
  ::SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, path);
  if (Narrow(path) + "\\" == expected) return;
  std::fprintf(stderr, "Documents is %s, not the sandbox's %s\n", Narrow(path).c_str(),
               expected.c_str());
  std::exit(99);
}

}  // namespace

Sandbox::Sandbox(const std::string& folderName) : oldFolder_(CurrentFolder()) {
  root_ = SandboxRoot() + std::to_string(::GetCurrentProcessId()) + "-" +
          std::to_string(::GetTickCount64()) + "\\";
  work_ = root_ + folderName + "\\";
  documents_ = root_ + "Documents\\";
  CreateFolders(work_.substr(0, work_.size() - 1));
  CreateFolders(documents_.substr(0, documents_.size() - 1));
  SetEnvironment("KVUTILS_DOCUMENTS", documents_.substr(0, documents_.size() - 1));
  SetCurrentFolder(work_);
  RequireDocuments(documents_);
}

Sandbox::~Sandbox() {
  std::setlocale(LC_ALL, "C");
  SetCurrentFolder(oldFolder_);
  RemoveTree(root_.substr(0, root_.size() - 1));
}

const std::vector<std::string> kFolderNames = {"Каталог", "天文データ", "🌍пуск"};

std::string FolderNameTag(const ::testing::TestParamInfo<std::string>& info) {
  static const char* const kTags[] = {"Cyrillic", "Japanese", "BeyondBmp"};
  return kTags[info.index];
}

}  // namespace kv::test
