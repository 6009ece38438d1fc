// The blocks of memory that a case leaves behind, in the sanitized build; nothing in others.
#ifndef KVUTILS_TESTS_SUPPORT_KEPT_BLOCKS_H_
#define KVUTILS_TESTS_SUPPORT_KEPT_BLOCKS_H_

#include <cstdint>

namespace kv::test {

class KeptBlocks {
 public:
  void Start();
  // Expects that each block allocated since Start is released, or held by the state of the process
  // that kept_blocks.cpp names.
  void ExpectNoneLost() const;

 private:
  std::uint64_t count_ = 0;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_KEPT_BLOCKS_H_
