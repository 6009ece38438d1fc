// Bugs on purpose, each behind a word that no input of a few thousand comes to by luck alone: only
// who keeps the inputs that get one letter further finds them.
#include <windows.h>

#include <string_view>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"

namespace kv::fuzz {
namespace {

bool IsMagic(std::string_view text) {
  if (text.size() < 4) return false;
  if (text[0] != 'K') return false;
  if (text[1] != '1') return false;
  if (text[2] != '9') return false;
  return text[3] == '4';
}

const Registration kOverflow({.name = "planted_overflow",
                              .check =
                                  [](Input input) {
                                    const std::string_view text = input.Rest();
                                    const GuardedRoom<char> room(4);
                                    volatile char* const place = room.Get();
                                    place[IsMagic(text) ? 4 : 3] = 'x';
                                  },
                              .seeds = {"J9611"},
                              .isPlanted = true});

const Registration kViolation({.name = "planted_violation",
                               .check =
                                   [](Input input) {
                                     const bool isMagic = IsMagic(input.Rest());
                                     Expect("the answer", isMagic, false);
                                   },
                               .seeds = {"J9611"},
                               .isPlanted = true});

const Registration kHang({.name = "planted_hang",
                          .check =
                              [](Input input) {
                                if (IsMagic(input.Rest())) ::Sleep(INFINITE);
                              },
                          .seeds = {"J9611"},
                          .isPlanted = true});

}  // namespace
}  // namespace kv::fuzz
