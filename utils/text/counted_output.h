// The output side of the counted converters: every unit is counted, those that fit are stored.
#ifndef KVUTILS_UTILS_TEXT_COUNTED_OUTPUT_H_
#define KVUTILS_UTILS_TEXT_COUNTED_OUTPUT_H_

#include "utils/internal/int_size.h"

#include <cstddef>

namespace kv::internal {

inline constexpr int kTooSmall = -1;
inline constexpr int kMalformed = -2;

// The number of units of an input or of room for them: none in a null buffer or for less than 0.
inline std::size_t UnitsOf(const void* buffer, int size) {
  return buffer == nullptr || size < 0 ? 0 : static_cast<std::size_t>(size);
}

template <typename Unit>
class CountedOutput {
 public:
  CountedOutput(Unit* out, int capacity) : out_(out), capacity_(UnitsOf(out, capacity)) {}

  void Put(Unit unit) {
    if (count_ < capacity_) out_[count_] = unit;
    ++count_;
  }

  // Stores both units or none.
  void PutPair(Unit first, Unit second) {
    if (count_ + 2 <= capacity_) {
      out_[count_] = first;
      out_[count_ + 1] = second;
    }
    count_ += 2;
  }

  [[nodiscard]] bool IsFull() const { return count_ >= capacity_; }

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

// The same of an output that is not there: nothing is stored, and everything is too much.
class UnitCounter {
 public:
  template <typename Unit>
  void Put(Unit /*unit*/) {
    ++count_;
  }
  template <typename Unit>
  void PutPair(Unit /*first*/, Unit /*second*/) {
    count_ += 2;
  }

  [[nodiscard]] static bool IsFull() { return true; }

  [[nodiscard]] int Finish(int& outLen) const {
    if (count_ == 0) return 0;
    outLen = IntSize(count_);
    return kTooSmall;
  }

 private:
  std::size_t count_ = 0;
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_COUNTED_OUTPUT_H_
