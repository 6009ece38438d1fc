// A converter beside its defining form: result, length and every byte of the output, between pages
// without access.
#ifndef KVUTILS_TESTS_TEXT_ENCODING_COMPARISON_H_
#define KVUTILS_TESTS_TEXT_ENCODING_COMPARISON_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_pages.h"

namespace kv::test {

template <typename Out, typename In>
class EncodingComparison {
 public:
  using Converter = int (*)(Out*, int&, const In*, int);

  // For texts of up to `longest` units, of which each gives up to three.
  EncodingComparison(Converter convert, Converter define, std::size_t longest)
      : convert_(convert),
        define_(define),
        longest_(longest),
        in_(longest * sizeof(In)),
        out_(OutSize() * sizeof(Out)),
        expected_(OutSize()) {}

  // The units that the text needs as far as it is well-formed.
  [[nodiscard]] std::size_t Needed(std::basic_string_view<In> text) {
    int outLen = static_cast<int>(OutSize());
    std::fill(expected_.begin(), expected_.end(), kUntouched);
    const int result =
        define_(expected_.data(), outLen, text.data(), static_cast<int>(text.size()));
    return result >= 0 ? static_cast<std::size_t>(result) : 3 * text.size();
  }

  // The text and the room lie at the end of their pages, or at the beginning.
  void ExpectSame(std::basic_string_view<In> text, std::size_t room, bool isAtEnd = true) {
    In* in = isAtEnd ? AtEnd<In>(in_, text.size()) : AtBegin<In>(in_);
    std::copy(text.begin(), text.end(), in);
    Out* out = isAtEnd ? AtEnd<Out>(out_, room) : AtBegin<Out>(out_);
    // What is seen of the memory around the room.
    Out* first = isAtEnd ? out - std::min(kAround, OutSize() - room) : out;
    Out* last = isAtEnd ? out + room : out + std::min(room + kAround, OutSize());
    std::fill(first, last, kUntouched);
    std::fill_n(expected_.begin(), room, kUntouched);

    int expectedLen = static_cast<int>(room);
    const int expected =
        define_(expected_.data(), expectedLen, text.data(), static_cast<int>(text.size()));
    int outLen = static_cast<int>(room);
    const int result = convert_(out, outLen, in, static_cast<int>(text.size()));

    const auto isUntouched = [](Out unit) { return unit == kUntouched; };
    const bool isSame = result == expected && outLen == expectedLen &&
                        std::equal(out, out + room, expected_.begin()) &&
                        std::all_of(first, out, isUntouched) &&
                        std::all_of(out + room, last, isUntouched);
    if (isSame) return;
    ADD_FAILURE() << "room " << room << ", result " << result << " for " << expected << ", length "
                  << outLen << " for " << expectedLen << ", text "
                  << testing::PrintToString(std::basic_string<In>(text.substr(0, 300)));
  }

 private:
  static constexpr Out kUntouched = static_cast<Out>(0xA55A);
  static constexpr std::size_t kAround = 64;

  template <typename Unit>
  static Unit* AtBegin(const GuardedPages& pages) {
    return static_cast<Unit*>(static_cast<void*>(pages.Begin()));
  }
  template <typename Unit>
  static Unit* AtEnd(const GuardedPages& pages, std::size_t units) {
    return static_cast<Unit*>(static_cast<void*>(pages.End() - units * sizeof(Unit)));
  }

  [[nodiscard]] std::size_t OutSize() const { return 3 * longest_ + kAround; }

  Converter convert_;
  Converter define_;
  std::size_t longest_;
  GuardedPages in_;
  GuardedPages out_;
  std::vector<Out> expected_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_TEXT_ENCODING_COMPARISON_H_
