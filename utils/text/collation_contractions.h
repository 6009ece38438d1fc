// Letters whose rank depends on what follows them.
#ifndef KVUTILS_UTILS_TEXT_COLLATION_CONTRACTIONS_H_
#define KVUTILS_UTILS_TEXT_COLLATION_CONTRACTIONS_H_

#include "utils/text/collation_learning.h"

namespace kv::internal {

// Leaves to the system the letters of the alphabet that it takes together with a letter of ASCII or
// with a mark behind them, as traditional Spanish takes "ch" for a letter between "c" and "d".
void DropContractions(unsigned flags, Alphabet alphabet, CollationRanks& ranks);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_COLLATION_CONTRACTIONS_H_
