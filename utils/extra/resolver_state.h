// The resolver's memory, kept from questions that are to leave no trace.
#ifndef KVUTILS_UTILS_EXTRA_RESOLVER_STATE_H_
#define KVUTILS_UTILS_EXTRA_RESOLVER_STATE_H_

#include "utils/paths/paths.h"

#include <map>
#include <string>
#include <vector>

namespace kv::internal {

// While this lives, the resolver works on copies of the remembered paths and of the add-on's list;
// then they are what they were, down to the places where their texts stand.
class KeptResolverState {
 public:
  KeptResolverState()
      : remembered_(KelvarisPath::ms_FileNamesStorage),
        addOnFolder_(KelvarisPath::sFeaturePackFolder),
        addOnNames_(KelvarisPath::sFeaturePackFileNames) {
    Exchange();
  }
  KeptResolverState(const KeptResolverState&) = delete;
  KeptResolverState& operator=(const KeptResolverState&) = delete;
  ~KeptResolverState() { Exchange(); }

 private:
  void Exchange() noexcept {
    KelvarisPath::ms_FileNamesStorage.swap(remembered_);
    KelvarisPath::sFeaturePackFolder.swap(addOnFolder_);
    KelvarisPath::sFeaturePackFileNames.swap(addOnNames_);
  }

  std::map<int, std::string> remembered_;
  std::string addOnFolder_;
  std::vector<std::string> addOnNames_;
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_EXTRA_RESOLVER_STATE_H_
