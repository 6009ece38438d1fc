// Base 64 beside its defining forms, and there and back again.
#include <string>
#include <string_view>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "tests/reference/base64.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

void CheckEncoding(std::string_view bytes, const char* tail) {
  const auto length = static_cast<int>(bytes.size());
  const GuardedCopy<unsigned char> data(
      std::basic_string<unsigned char>(bytes.begin(), bytes.end()));
  const int size = reference::Encode(nullptr, data.Get(), length, tail);
  Expect("characters", btos(nullptr, data.Get(), length, tail), size);
  const GuardedRoom<char> out(static_cast<std::size_t>(size));
  const GuardedRoom<char> plain(static_cast<std::size_t>(size));
  reference::Encode(plain.Get(), data.Get(), length, tail);
  Expect("characters", btos(out.Get(), data.Get(), length, tail), size);
  Expect("encoded", out.Units(), plain.Units());
}

void CheckDecoding(const std::string& text, const char* tail, int maxChars) {
  const GuardedText in(text);
  const GuardedRoom<unsigned char> plain(text.size());
  const GuardedRoom<unsigned char> out(text.size());
  const int size = reference::Decode(plain.Get(), in.Get(), tail, maxChars);
  Expect("bytes", stob(nullptr, in.Get(), tail, maxChars), size);
  Expect("bytes", stob(out.Get(), in.Get(), tail, maxChars), size);
  Expect("decoded", std::string(out.Units().begin(), out.Units().end()),
         std::string(plain.Units().begin(), plain.Units().end()));
}

// With 64 different characters, none of them the padding.
void CheckRoundTrip(std::string_view bytes, const char* tail) {
  std::string text(2 * bytes.size() + 4, '\0');
  const auto* const data = reinterpret_cast<const unsigned char*>(bytes.data());
  const int size = btos(text.data(), data, static_cast<int>(bytes.size()), tail);
  std::basic_string<unsigned char> back(bytes.size() + 4, 0);
  const int count = stob(back.data(), text.c_str(), tail, size);
  Expect("bytes back", count, static_cast<int>(bytes.size()));
  Expect("back", std::string(back.begin(), back.begin() + count), std::string(bytes));
}

void Check(Input input) {
  const int maxChars = input.Between(-1, 255);
  const std::size_t tails = input.Below(4);
  const std::string anyTail = tails == 3 ? input.Text() : "";
  const std::string_view bytes = input.Rest();
  static constexpr const char* kTails[] = {nullptr, "+/=", "-_"};
  const GuardedText tailText(anyTail.substr(0, 3));
  const char* const tail = tails == 3 ? tailText.Get() : kTails[tails];
  const std::string text(bytes.substr(0, bytes.find('\0')));

  CheckEncoding(bytes, tail);
  CheckDecoding(text, tail, maxChars);
  CheckDecoding(text, tail, 1 << 20);
  if (tails != 3) CheckRoundTrip(bytes, tail);
}

const Registration kTarget(
    {.name = "base64",
     .check = Check,
     .seeds = {"AQIDBAUG\xFF\xFE\1\xFF",
               "QmFzZTY0IGVuY29kZWQgdGV4dCBvZiBtb3JlIHRoYW4gMzIgYnl0ZXM=\1\xFF",
               "__4-abcdefghijklmnopqrstuvwxyz0123456789ABCDEFGHIJKL\2\xFF",
               std::string(".!*\0AQ**\3\x20", 10)},
     .words = {"=", "==", "AQID", "-_"}});

}  // namespace
}  // namespace kv::fuzz
