// A needle in a hay of bytes, which it does not occur in or ends.
#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "bench/support/memory.h"
#include "bench/support/opaque.h"
#include "tests/reference/memory_search.h"
#include "utils/internal/processor.h"
#include "utils/text/memory_search_pair.h"
#include "utils/text/memory_search_two_way.h"
#include "utils/text/text.h"

namespace {

using Bytes = std::vector<unsigned char>;

struct Input {
  Bytes hay;
  Bytes needle;

  [[nodiscard]] unsigned HaySize() const { return static_cast<unsigned>(hay.size()); }
  [[nodiscard]] unsigned NeedleSize() const { return static_cast<unsigned>(needle.size()); }
  [[nodiscard]] std::size_t Places() const { return hay.size() - needle.size() + 1; }
};

int OffsetOf(Bytes::const_iterator found, const Bytes& hay) {
  return found == hay.end() ? -1 : static_cast<int>(found - hay.begin());
}

int Library(const Input& input) {
  return MemorySearch(input.hay.data(), input.HaySize(), input.needle.data(), input.NeedleSize());
}

const kv::bench::Opaque kPlain(kv::reference::MemorySearch);

int Plain(const Input& input) {
  return kPlain(input.hay.data(), input.HaySize(), input.needle.data(), input.NeedleSize());
}

int StdSearch(const Input& input) {
  const auto& [hay, needle] = input;
  return OffsetOf(std::search(hay.begin(), hay.end(), needle.begin(), needle.end()), hay);
}

int Horspool(const Input& input) {
  const auto& [hay, needle] = input;
  const std::boyer_moore_horspool_searcher searcher(needle.begin(), needle.end());
  return OffsetOf(std::search(hay.begin(), hay.end(), searcher), hay);
}

int TwoWay(const Input& input) {
  const std::size_t place =
      kv::internal::FindByTwoWay(input.hay.data(), input.Places(), input.needle);
  return place == input.Places() ? -1 : static_cast<int>(place);
}

// The places where the needle's ends stand, each looked at by nothing more.
template <auto kForm>
int Pairs(const Input& input) {
  const kv::internal::BytePair ends = {input.needle.front(), input.needle.back(),
                                       input.needle.size() - 1};
  std::size_t place = 0;
  int count = 0;
  for (;; ++place, ++count) {
    place += kForm(input.hay.data() + place, input.Places() - place, ends);
    if (place == input.Places()) return count;
  }
}

struct Form {
  std::string name;
  int (*search)(const Input&);
};

const std::vector<Form> kForms = {{"library", Library},
                                  {"plain", Plain},
                                  {"std::search", StdSearch},
                                  {"std::boyer_moore_horspool_searcher", Horspool},
                                  {"two-way alone", TwoWay}};

// Other bytes at each call.
Bytes Noise(std::size_t size, unsigned bytesInUse = 0xFF) {
  static unsigned calls = 0;
  std::mt19937 random(20240302 + calls++);
  Bytes bytes(size);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random() % bytesInUse);
  return bytes;
}

// Words of letters as frequent as in English.
Bytes Prose(std::size_t size) {
  const std::string letters =
      "      eeeeeeeetttttaaaaaooooiiiiinnnnnsssshhhhrrrrddllluuccmmwwffggyyppbbvk.";
  std::mt19937 random(20240303);
  Bytes bytes(size);
  for (unsigned char& byte : bytes)
    byte = static_cast<unsigned char>(letters[random() % letters.size()]);
  return bytes;
}

// The end of the hay, whose last byte stands nowhere else.
Input AtTheEnd(Bytes hay, std::size_t needleSize) {
  hay.back() = 0xFF;
  Bytes needle(hay.end() - static_cast<std::ptrdiff_t>(needleSize), hay.end());
  return {std::move(hay), std::move(needle)};
}

// The letter a, and a needle of it with one b, at the given place.
Input Repetitive(std::size_t haySize, std::size_t needleSize, std::size_t place) {
  Input input = {Bytes(haySize, 'a'), Bytes(needleSize, 'a')};
  input.needle[place] = 'b';
  return input;
}

// A word over and over, and a needle whose ends are frequent in it.
Input Periodic(const std::string& word, std::size_t haySize, const std::string& needle) {
  Input input = {Bytes(haySize), Bytes(needle.begin(), needle.end())};
  for (std::size_t i = 0; i < haySize; ++i)
    input.hay[i] = static_cast<unsigned char>(word[i % word.size()]);
  return input;
}

// Of so few letters that two bytes of the needle stand at many places, its middle at none.
Input FewLetters(std::size_t haySize, std::size_t needleSize, unsigned letters) {
  Input input = {Noise(haySize, letters), Noise(needleSize, letters)};
  input.needle[needleSize / 2] = 0xFF;
  return input;
}

constexpr int kAsAlways = 0;

// In `rounds` rounds of one call each, if it is not kAsAlways.
void Compare(const std::string& operation, Input input, int rounds = kAsAlways) {
  const auto shared = std::make_shared<const Input>(std::move(input));
  kv::bench::Comparison comparison("MemorySearch, " + operation);
  if (rounds != kAsAlways) comparison.CallOnceIn(rounds);
  for (const Form& form : kForms)
    comparison.Add(form.name, [shared, form] { return form.search(*shared); });
  comparison.Add("limit: reading the memory", [shared] { return kv::bench::ReadAll(shared->hay); });
  // Of a hay that repeats itself the forms below would measure little but their calls.
  if (shared->hay.front() == shared->hay.back()) return;
  comparison.Add("pairs, SSE2", [shared] { return Pairs<kv::internal::FindPairBySse2>(*shared); });
  if (kv::internal::g_processor.avx2)
    comparison.Add("pairs, AVX2",
                   [shared] { return Pairs<kv::internal::FindPairByAvx2>(*shared); });
}

}  // namespace

void kv::bench::CheckAgreement() {
  std::mt19937 random(20240304);
  for (int i = 0; i < 20'000; ++i) {
    const unsigned bytesInUse = 1 + random() % 3;
    Input input = {Noise(random() % 200, bytesInUse), Noise(1 + random() % 8, bytesInUse)};
    if (input.hay.size() < input.needle.size()) continue;
    for (const Form& form : kForms) Require(form.search(input) == Plain(input), form.name.c_str());
  }
}

void kv::bench::RegisterComparisons() {
  for (const std::size_t size : {4U, 8U, 16U, 64U, 4096U})
    Compare(std::to_string(size) + " bytes, needle 4", AtTheEnd(Noise(size), 4));
  for (const std::size_t needle : {1U, 4U, 16U, 64U})
    Compare("65535 bytes, needle " + std::to_string(needle), AtTheEnd(Noise(65535), needle));
  for (const std::size_t needle : {4U, 16U, 64U})
    Compare("64 MiB, needle " + std::to_string(needle), AtTheEnd(Noise(64U << 20), needle),
            kFewRounds);
  Compare("64 MiB of prose, needle 16", AtTheEnd(Prose(64U << 20), 16), kFewRounds);
  for (const std::size_t size : {64U, 1000U})
    Compare(std::to_string(size) + " times a, needle aba", Repetitive(size, 3, 1));
  for (const std::size_t place : {1U, 8U, 14U})
    Compare("1 MiB of a, needle 16 with b at " + std::to_string(place),
            Repetitive(1U << 20, 16, place));
  Compare("65535 times a, needle 4096 with b at 2048", Repetitive(65535, 4096, 2048));
  for (const std::size_t size : {100U, 8192U}) {
    const std::string hay = std::to_string(size) + " bytes of ";
    Compare(hay + "axx, needle ayya", Periodic("axx", size, "ayya"));
    Compare(hay + "two letters, needle 3", FewLetters(size, 3, 2));
    // The pair changes with every candidate and is frequent nevertheless. The library then takes up
    // to half as long again as the plain form, and 20 ns longer in hays of up to 64 bytes.
    Compare(hay + "axzayx, needle ayz", Periodic("axzayx", size, "ayz"));
    Compare(hay + "aab, needle aaaaaaab", Periodic("aab", size, "aaaaaaab"));
  }
  for (const std::size_t needle : {1'000U, 1'000'000U})
    Compare("40 places, needle " + std::to_string(needle),
            {Noise(needle + 39, 4), Noise(needle, 4)});
}
