#include "utils/files/text_stream.h"

#include <algorithm>

namespace kv::internal {
namespace {

// Reads up to `limit` characters and drops them; returns how many there were.
std::size_t Skip(std::FILE* file, std::size_t limit) {
  char piece[4096];
  std::size_t skipped = 0;
  while (skipped < limit) {
    const std::size_t wanted = std::min(limit - skipped, sizeof piece);
    const std::size_t read = std::fread(piece, 1, wanted, file);
    if (read == 0) break;
    skipped += read;
  }
  return skipped;
}

std::size_t SkipToEnd(std::FILE* file) { return Skip(file, static_cast<std::size_t>(-1)); }

}  // namespace

ScopedTextPosition::ScopedTextPosition(std::FILE* file) : file_(file) {
  const std::size_t remaining = SkipToEnd(file);
  std::rewind(file);
  const std::size_t total = SkipToEnd(file);
  position_ = total - std::min(remaining, total);
  Restore();
}

ScopedTextPosition::~ScopedTextPosition() { Restore(); }

void ScopedTextPosition::Restore() const {
  std::rewind(file_);
  Skip(file_, position_);
}

}  // namespace kv::internal
