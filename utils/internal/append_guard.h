#ifndef KVUTILS_UTILS_INTERNAL_APPEND_GUARD_H_
#define KVUTILS_UTILS_INTERNAL_APPEND_GUARD_H_

#include <cstddef>
#include <string>
#include <vector>

namespace kv::internal {

// Takes back what is appended to a list while this lives, unless Keep is called: a list that memory
// was short for holds all of it or nothing.
class AppendGuard {
 public:
  explicit AppendGuard(std::vector<std::string>& list) : list_(&list), size_(list.size()) {}
  AppendGuard(const AppendGuard&) = delete;
  AppendGuard& operator=(const AppendGuard&) = delete;
  ~AppendGuard() {
    if (list_ != nullptr) list_->resize(size_);
  }

  void Keep() { list_ = nullptr; }

 private:
  std::vector<std::string>* list_;
  std::size_t size_;
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_APPEND_GUARD_H_
