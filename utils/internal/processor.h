// What this processor offers beyond the instructions that every x86-64 has, SSE2 among them.
#ifndef KVUTILS_UTILS_INTERNAL_PROCESSOR_H_
#define KVUTILS_UTILS_INTERNAL_PROCESSOR_H_

namespace kv::internal {

struct Processor {
  bool carryless128 = false;  // PCLMULQDQ with SSE4.1
  bool carryless512 = false;  // and VPCLMULQDQ with AVX-512 F, VL and BW
  bool avx2 = false;          // AVX2
};

// Found once, when the library is loaded; before that, nothing. Whoever has a faster form for some
// processors chooses here, at each call: the question is a load and a branch.
extern const Processor g_processor;

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_PROCESSOR_H_
