#include "utils/files/text_position.h"

#include <algorithm>
#include <cstdint>

namespace kv::internal {
namespace {

// Reads up to `limit` characters and drops them; returns how many there were. One at a time: a
// block read that spans two fills of the stream's buffer goes on behind a Ctrl-Z, where the text
// ends.
std::size_t Skip(std::FILE* file, std::size_t limit) {
  std::size_t skipped = 0;
  while (skipped < limit && std::getc(file) != EOF) ++skipped;
  return skipped;
}

}  // namespace

ScopedTextPosition::ScopedTextPosition(std::FILE* file) : file_(file) {
  const std::size_t remaining = Skip(file, SIZE_MAX);
  std::rewind(file);
  const std::size_t total = Skip(file, SIZE_MAX);
  position_ = total - std::min(remaining, total);
  Restore();
}

ScopedTextPosition::~ScopedTextPosition() { Restore(); }

void ScopedTextPosition::Restore() const {
  std::rewind(file_);
  Skip(file_, position_);
}

}  // namespace kv::internal
