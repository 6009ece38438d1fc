// The functions that a module takes from others, and where the loader has put their addresses.
#ifndef KVUTILS_TESTS_SUPPORT_IMPORT_TABLE_H_
#define KVUTILS_TESTS_SUPPORT_IMPORT_TABLE_H_

#include <windows.h>

#include <cstddef>

namespace kv::test {

template <typename Type>
Type* AtOffset(std::byte* image, std::size_t offset) {
  return reinterpret_cast<Type*>(image + offset);
}

// Calls visit(name, slot) for each function that is imported by name.
template <typename Visit>
void ForEachImport(HMODULE module, Visit visit) {
  auto* const image = reinterpret_cast<std::byte*>(module);
  const auto* const dos = AtOffset<IMAGE_DOS_HEADER>(image, 0);
  const auto* const headers = AtOffset<IMAGE_NT_HEADERS>(image, static_cast<DWORD>(dos->e_lfanew));
  const auto& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (auto* library = AtOffset<IMAGE_IMPORT_DESCRIPTOR>(image, table.VirtualAddress);
       library->Name != 0; ++library) {
    const auto* name = AtOffset<IMAGE_THUNK_DATA>(image, library->OriginalFirstThunk);
    auto* address = AtOffset<IMAGE_THUNK_DATA>(image, library->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* entry = AtOffset<IMAGE_IMPORT_BY_NAME>(image, name->u1.AddressOfData);
      visit(reinterpret_cast<const char*>(entry->Name),
            reinterpret_cast<void**>(&address->u1.Function));
    }
  }
}

// The loader leaves the table read-only.
inline void StoreImport(void** slot, void* function) {
  DWORD protection = 0;
  ::VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
  *slot = function;
  ::VirtualProtect(slot, sizeof *slot, protection, &protection);
}

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_IMPORT_TABLE_H_
