#include "tests/support/import_patch.h"

#include <windows.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace kv::test {
namespace {

template <typename Type>
Type* At(std::byte* image, std::size_t offset) {
  return reinterpret_cast<Type*>(image + offset);
}

// The address that the loader has filled in for an import of the module; null when there is none.
void** FindImport(HMODULE module, const char* function) {
  auto* const image = reinterpret_cast<std::byte*>(module);
  const auto* const dos = At<IMAGE_DOS_HEADER>(image, 0);
  const auto* const headers = At<IMAGE_NT_HEADERS>(image, static_cast<DWORD>(dos->e_lfanew));
  const auto& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(image, table.VirtualAddress); library->Name != 0;
       ++library) {
    const auto* name = At<IMAGE_THUNK_DATA>(image, library->OriginalFirstThunk);
    auto* address = At<IMAGE_THUNK_DATA>(image, library->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* entry = At<IMAGE_IMPORT_BY_NAME>(image, name->u1.AddressOfData);
      if (std::strcmp(reinterpret_cast<const char*>(entry->Name), function) == 0) {
        return reinterpret_cast<void**>(&address->u1.Function);
      }
    }
  }
  return nullptr;
}

// The loader leaves the table read-only.
void Store(void** slot, void* value) {
  DWORD protection = 0;
  ::VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
  *slot = value;
  ::VirtualProtect(slot, sizeof *slot, protection, &protection);
}

}  // namespace

ImportPatch::ImportPatch(const char* function, void* replacement)
    : slot_(FindImport(::GetModuleHandleW(L"kvutils.dll"), function)) {
  if (slot_ == nullptr) {
    std::fprintf(stderr, "kvutils.dll does not import %s\n", function);
    std::exit(99);
  }
  original_ = *slot_;
  Store(slot_, replacement);
}

ImportPatch::~ImportPatch() { Store(slot_, original_); }

}  // namespace kv::test
