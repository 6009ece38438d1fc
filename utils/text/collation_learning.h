// How the order of the system is found out, and put to the test.
#ifndef KVUTILS_UTILS_TEXT_COLLATION_LEARNING_H_
#define KVUTILS_UTILS_TEXT_COLLATION_LEARNING_H_

#include "utils/text/collation_ranks.h"

namespace kv::internal {

enum class Alphabet { kAscii, kWithLetters };

// Asks the system for the weights of the alphabet; letters outside it are left unlearned. False
// when the system refuses to compare, or answers otherwise than the weights do.
bool LearnRanks(unsigned flags, Alphabet alphabet, CollationRanks& ranks);

// Leaves to the system what has a letter in it before it is decided.
void ForgetLetters(CollationRanks& ranks);

// Whether the system's answers for a few hundred random pairs are those of the ranks.
bool HoldForSamples(unsigned flags, Alphabet alphabet, const CollationRanks& ranks);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_COLLATION_LEARNING_H_
