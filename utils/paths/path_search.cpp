#include "utils/paths/path_search.h"

#include "utils/files/files.h"
#include "utils/internal/name_hash.h"
#include "utils/paths/paths.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace kv::internal {
namespace {

// As GetUniqueID gives it.
int Identifier(std::string_view path) {
  return ExtendNameHash(0, path.data(), path.size()) & std::numeric_limits<int>::max();
}

}  // namespace

const std::string* PathSearch::Find(const PathText& path) {
  if (path.IsOverlong()) return nullptr;
  auto& storage = KelvarisPath::ms_FileNamesStorage;
  const int identifier = Identifier(path.View());
  const auto remembered = storage.find(identifier);
  if (remembered != storage.end()) {
    return remembered->second.size() < kPathSize ? &remembered->second : nullptr;
  }
  if (!Exists(path)) return nullptr;
  return &storage.emplace(identifier, path.View()).first->second;
}

bool PathSearch::Exists(const PathText& path) {
  if (IsMiss(path)) return false;
  if (MFile::IsExist(path.Get())) return true;
  if (missCount_ < kMostMisses) {
    Miss& miss = misses_[missCount_++];
    miss.size = path.View().copy(miss.text, kPathSize);
  }
  return false;
}

bool PathSearch::IsMiss(const PathText& path) const {
  return std::any_of(misses_, misses_ + missCount_, [&path](const Miss& miss) {
    return std::string_view(miss.text, miss.size) == path.View();
  });
}

}  // namespace kv::internal
