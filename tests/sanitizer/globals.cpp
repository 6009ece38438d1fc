#include "tests/sanitizer/globals.h"

namespace kv::sanitizer {
namespace {

struct Group {
  const GlobalObject* objects;
  std::size_t count;
};

// One group a source file; modules are loaded and unloaded one at a time.
constexpr std::size_t kMaxGroups = 1024;
Group g_groups[kMaxGroups];
std::size_t g_groupCount = 0;

}  // namespace

void RegisterGlobals(const GlobalObject* objects, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    Allow(objects[i].begin, objects[i].size, objects[i].sizeWithMargin, kGlobalMargin);
  }
  if (g_groupCount < kMaxGroups) g_groups[g_groupCount++] = {objects, count};
}

void UnregisterGlobals(const GlobalObject* objects, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) AllowAll(objects[i].begin, objects[i].sizeWithMargin);
  for (std::size_t i = 0; i < g_groupCount; ++i) {
    if (g_groups[i].objects == objects) g_groups[i].count = 0;
  }
}

const GlobalObject* NearestGlobal(Address address) {
  for (std::size_t group = 0; group < g_groupCount; ++group) {
    for (std::size_t i = 0; i < g_groups[group].count; ++i) {
      const GlobalObject& object = g_groups[group].objects[i];
      if (address - object.begin < object.sizeWithMargin) return &object;
    }
  }
  return nullptr;
}

}  // namespace kv::sanitizer
