#include "tests/planted_bugs/held_block.h"

#include <vector>

namespace kv::test {
namespace {

std::vector<char> g_held;

}  // namespace

void HoldBlock() { g_held.assign(40, 'x'); }

}  // namespace kv::test
