#include "utils/internal/processor.h"

#include "utils/internal/compiler.h"

namespace kv::internal {
namespace {

Processor AskProcessor() {
  Processor processor;
  processor.carryless128 = KVUTILS_PROCESSOR_HAS("pclmul") && KVUTILS_PROCESSOR_HAS("sse4.1");
  processor.carryless512 = processor.carryless128 && KVUTILS_PROCESSOR_HAS("vpclmulqdq") &&
                           KVUTILS_PROCESSOR_HAS("avx512f") && KVUTILS_PROCESSOR_HAS("avx512vl") &&
                           KVUTILS_PROCESSOR_HAS("avx512bw");
  processor.avx2 = KVUTILS_PROCESSOR_HAS("avx2");
  return processor;
}

}  // namespace

const Processor g_processor = AskProcessor();

}  // namespace kv::internal
