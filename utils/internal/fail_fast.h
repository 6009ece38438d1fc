#ifndef KVUTILS_UTILS_INTERNAL_FAIL_FAST_H_
#define KVUTILS_UTILS_INTERNAL_FAIL_FAST_H_

namespace kv::internal {

// What a process ends with when going on would do harm; the system's own codes for such ends.
enum class FatalError : unsigned long {
  kRangeCheck = 0xC0000409,        // STATUS_STACK_BUFFER_OVERRUN
  kInvalidParameter = 0xC0000417,  // STATUS_INVALID_CRUNTIME_PARAMETER
};

// Ends the process at once with that exit code: no handler, destructor or dialog has a say.
[[noreturn]] void FailFast(FatalError error);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_FAIL_FAST_H_
