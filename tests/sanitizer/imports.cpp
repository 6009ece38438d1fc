#include "tests/sanitizer/imports.h"

#include <windows.h>

#include <cstring>

#include "tests/support/import_table.h"

namespace kv::sanitizer {
namespace {

// Modules whose calls are checked.
constexpr std::size_t kMaxModules = 16;
HMODULE g_modules[kMaxModules];

// Whether the module is new; it is noted as seen.
bool IsNew(HMODULE module) {
  for (HMODULE& seen : g_modules) {
    if (seen == module) return false;
    if (seen == nullptr) {
      seen = module;
      return true;
    }
  }
  return false;
}

HMODULE ModuleAt(const void* address) {
  HMODULE module = nullptr;
  ::GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      static_cast<const wchar_t*>(address), &module);
  return module;
}

// A program that holds the sanitizer itself keeps its calls: they are the sanitizer's as well.
bool IsOwn(HMODULE module) { return module == ModuleAt(g_modules); }

void CheckCallsOf(HMODULE module) {
  if (module == nullptr || IsOwn(module) || !IsNew(module)) return;
  kv::test::ForEachImport(module, [](const char* name, void** slot) {
    for (const auto& calls : {AllocationCalls(), TextCalls(), SystemCalls()}) {
      for (const CheckedCall& call : calls) {
        if (std::strcmp(call.name, name) == 0) kv::test::StoreImport(slot, call.replacement);
      }
    }
  });
}

}  // namespace

void CheckCallsOfModuleAt(const void* address) { CheckCallsOf(ModuleAt(address)); }

void CheckCallsOfCppLibrary() { CheckCallsOf(::GetModuleHandleW(L"libstdc++-6.dll")); }

}  // namespace kv::sanitizer
