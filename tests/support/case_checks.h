// What is checked at the end of each case, whatever the case is about: the heaps of the process are
// in order, and in the sanitized build no block of memory is left that nothing can release.
#ifndef KVUTILS_TESTS_SUPPORT_CASE_CHECKS_H_
#define KVUTILS_TESTS_SUPPORT_CASE_CHECKS_H_

namespace kv::test {

// For a case in which the system itself writes beyond a block: it leaves the heaps unlooked at.
void LeaveHeapsUnchecked();

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_CASE_CHECKS_H_
