// The output side of the counted converters: every unit is counted, those that fit are stored.
#ifndef KVUTILS_UTILS_TEXT_COUNTED_OUTPUT_H_
#define KVUTILS_UTILS_TEXT_COUNTED_OUTPUT_H_

#include "utils/internal/int_size.h"

#include <cstddef>

namespace kv::internal {

inline constexpr int kTooSmall = -1;
inline constexpr int kMalformed = -2;

template <typename Unit>
class CountedOutput {
 public:
  // A null `out` has no room.
  CountedOutput(Unit* out, int capacity)
      : out_(out),
        capacity_(out == nullptr || capacity < 0 ? 0 : static_cast<std::size_t>(capacity)) {}

  void Put(Unit unit) {
    if (count_ < capacity_) out_[count_] = unit;
    ++count_;
  }

  // Stores both units or none.
  void PutPair(Unit first, Unit second) {
    if (HasRoomFor(2)) {
      out_[count_] = first;
      out_[count_ + 1] = second;
    }
    count_ += 2;
  }

  // Stores `size` one-unit characters, for which there is room.
  template <std::size_t size, typename Source>
  void PutBlock(const Source* block) {
    for (std::size_t i = 0; i < size; ++i) out_[count_ + i] = static_cast<Unit>(block[i]);
    count_ += size;
  }

  [[nodiscard]] bool IsFull() const { return count_ >= capacity_; }
  [[nodiscard]] bool HasRoomFor(std::size_t units) const {
    return count_ <= capacity_ && units <= capacity_ - count_;
  }
  [[nodiscard]] std::size_t Count() const { return count_; }

  // The converter's result at the end of well-formed input.
  [[nodiscard]] int Finish(int& outLen) const {
    const int count = IntSize(count_);
    if (count_ <= capacity_) return count;
    outLen = count;
    return kTooSmall;
  }

 private:
  Unit* out_;
  std::size_t capacity_;
  std::size_t count_ = 0;
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_COUNTED_OUTPUT_H_
