// The comparison of asteroids where it takes copies of the names.
#ifndef KVUTILS_UTILS_TEXT_ASTEROID_NAMES_H_
#define KVUTILS_UTILS_TEXT_ASTEROID_NAMES_H_

namespace kv::internal {

// Asks the system, under the flags of CompareStringEx, about two names without their parentheses.
// Either may be null. -1, 0, 1 or kComparisonFailed.
int CompareWithoutParentheses(const char* a, const char* b, unsigned flags);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_ASTEROID_NAMES_H_
