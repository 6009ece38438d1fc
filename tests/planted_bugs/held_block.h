#ifndef KVUTILS_TESTS_PLANTED_BUGS_HELD_BLOCK_H_
#define KVUTILS_TESTS_PLANTED_BUGS_HELD_BLOCK_H_

namespace kv::test {

// Holds a block of forty bytes for the life of the process, in an object that no list names.
void HoldBlock();

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PLANTED_BUGS_HELD_BLOCK_H_
