#include "tests/support/import_patch.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/support/import_table.h"

namespace kv::test {
namespace {

// The address that the loader has filled in for an import of the module; null when there is none.
void** FindImport(HMODULE module, const char* function) {
  void** found = nullptr;
  ForEachImport(module, [&](const char* name, void** slot) {
    if (found == nullptr && std::strcmp(name, function) == 0) found = slot;
  });
  return found;
}

}  // namespace

ImportPatch::ImportPatch(const char* function, void* replacement)
    : slot_(FindImport(::GetModuleHandleW(L"kvutils.dll"), function)) {
  if (slot_ == nullptr) {
    std::fprintf(stderr, "kvutils.dll does not import %s\n", function);
    std::exit(99);
  }
  original_ = *slot_;
  StoreImport(slot_, replacement);
}

ImportPatch::~ImportPatch() { StoreImport(slot_, original_); }

}  // namespace kv::test
