// Texts between UTF-8, UTF-16 and Latin-1. Short texts are many different ones in turn, so that the
// processor does not learn where the characters of one text stand.
#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "bench/support/opaque.h"
#include "tests/reference/encoding.h"
#include "utils/text/text.h"

namespace {

// So many percent of the characters are of an alphabet, the others ASCII.
struct Alphabet {
  unsigned percent;
  const char* lead;  // its characters without their last byte
};

// The words of a text are of one of the alphabets each.
struct Script {
  const char* name;
  std::vector<Alphabet> alphabets;
};

constexpr Alphabet kLatinLetters = {8, "\xC3"};
constexpr Alphabet kCyrillicLetters = {85, "\xD0"};
constexpr Alphabet kKana = {95, "\xE3\x81"};
constexpr Alphabet kEmoji = {95, "\xF0\x9F\x98"};

const Script kAscii = {"ASCII", {{0, ""}}};
const Script kLatin = {"Latin", {kLatinLetters}};
const Script kCyrillic = {"Cyrillic", {kCyrillicLetters}};
const Script kJapanese = {"Japanese", {kKana}};
const Script kMixed = {"mixed scripts", {kLatinLetters, kCyrillicLetters, kKana, kEmoji}};

constexpr std::size_t kManyBytes = 1U << 20;

struct Kind {
  const Script& script;
  std::vector<std::size_t> sizes;
};

const Kind kKinds[] = {{kAscii, {8, 30, 60, 200, kManyBytes}},
                       {kLatin, {8, 30, 60, 200, kManyBytes}},
                       {kCyrillic, {8, 30, 60, 200, kManyBytes}},
                       {kJapanese, {8, 30, 60, 200, kManyBytes}},
                       {kMixed, {100, kManyBytes}}};
const Kind kMeasuredKinds[] = {
    {kAscii, {60, kManyBytes}}, {kLatin, {60, kManyBytes}}, {kMixed, {100, kManyBytes}}};
const Kind kLatin1Kinds[] = {{kAscii, {8, 60, kManyBytes}}, {kLatin, {8, 60, kManyBytes}}};
const Kind kWideTextKinds[] = {{kAscii, {8, 60, 200}}, {kLatin, {60}}};

void AppendWord(std::string& text, const Alphabet& alphabet, std::size_t end,
                std::mt19937& random) {
  while (text.size() < end) {
    if (random() % 100 < alphabet.percent && text.size() + std::strlen(alphabet.lead) < end) {
      text += alphabet.lead;
      text += static_cast<char>(0x80 + random() % 64);
    } else {
      text += static_cast<char>(alphabet.percent > 50 ? ' ' : 'a' + random() % 26);
    }
  }
}

std::string Text(const Script& script, std::size_t size, std::mt19937& random) {
  constexpr unsigned kLongestWord = 24;
  const std::vector<Alphabet>& alphabets = script.alphabets;
  std::string text;
  while (text.size() < size) {
    const std::size_t end =
        alphabets.size() == 1 ? size : text.size() + 1 + random() % kLongestWord;
    AppendWord(text, alphabets[random() % alphabets.size()], std::min(end, size), random);
  }
  return text;
}

// A text in all encodings; what Latin-1 has no place for is empty in it.
struct Sample {
  std::string utf8;
  std::wstring utf16;
  std::string latin1;
};

std::string Latin1(const std::string& utf8) {
  std::string latin1(utf8.size(), '\0');
  int room = static_cast<int>(utf8.size());
  const int size = kv::reference::Utf8ToIsolat1(latin1.data(), room, utf8.data(), room);
  latin1.resize(static_cast<std::size_t>(std::max(size, 0)));
  return latin1;
}

// Texts of one script and size; copies share them, and each takes them in turn.
class Samples {
 public:
  Samples(const Script& script, std::size_t size) : samples_(new std::vector<Sample>) {
    std::mt19937 random(20240229);
    const std::size_t count = size < kManyBytes ? 64 : 1;
    for (std::size_t i = 0; i < count; ++i) {
      const std::string utf8 = Text(script, size, random);
      samples_->push_back({utf8, kv::reference::Ascii2Unicode(utf8.c_str(), true), Latin1(utf8)});
    }
  }

  const Sample& Next() {
    next_ = next_ + 1 == samples_->size() ? 0 : next_ + 1;
    return (*samples_)[next_];
  }
  [[nodiscard]] const std::vector<Sample>& All() const { return *samples_; }

 private:
  std::shared_ptr<std::vector<Sample>> samples_;
  std::size_t next_ = 0;
};

std::string Name(const char* function, std::size_t size, const Script& script) {
  const std::string bytes = size == kManyBytes ? "1 MiB" : std::to_string(size) + " bytes";
  return std::string(function) + ", " + bytes + " of " + script.name;
}

int SystemUtf8ToUtf16(wchar_t* out, int& outLen, const char* in, int inLen) {
  return ::MultiByteToWideChar(CP_UTF8, 0, in, inLen, out, outLen);
}

int SystemUtf16ToUtf8(char* out, int& outLen, const wchar_t* in, int inLen) {
  return ::WideCharToMultiByte(CP_UTF8, 0, in, inLen, out, outLen, nullptr, nullptr);
}

template <typename Out, typename In>
using Converter = int (*)(Out*, int&, const In*, int);

template <typename Unit>
using TextOf = std::basic_string<Unit> Sample::*;

template <typename Unit>
int Size(const std::basic_string<Unit>& text) {
  return static_cast<int>(text.size());
}

// A converter as a form: the next of the samples into a buffer of `room` units.
template <typename Out, typename In>
auto Converting(Converter<Out, In> convert, const Samples& samples, TextOf<In> input,
                std::size_t room) {
  return [convert = kv::bench::Opaque(convert), samples = samples, input,
          out = std::basic_string<Out>(room, Out())]() mutable {
    const std::basic_string<In>& in = samples.Next().*input;
    int capacity = Size(out);
    return convert(out.data(), capacity, in.data(), Size(in));
  };
}

// The same without a buffer: the size of the result.
template <typename Out, typename In>
auto Measuring(Converter<Out, In> convert, const Samples& samples, TextOf<In> input) {
  return [convert = kv::bench::Opaque(convert), samples = samples, input]() mutable {
    const std::basic_string<In>& in = samples.Next().*input;
    int size = 0;
    convert(nullptr, size, in.data(), Size(in));
    return size;
  };
}

// The result, at hand, into a buffer.
template <typename Unit>
auto Copying(const Samples& samples, TextOf<Unit> result, std::size_t room) {
  return [samples = samples, result, out = std::basic_string<Unit>(room, Unit())]() mutable {
    const std::basic_string<Unit>& text = samples.Next().*result;
    return std::memcpy(out.data(), text.data(), text.size() * sizeof(Unit));
  };
}

// The system writes four bytes for a pair of surrogates, the library three.
bool SystemNarrowsAlike(const Script& script) { return &script != &kMixed; }

void CompareConverters(const Script& script, std::size_t size) {
  const Samples samples(script, size);
  kv::bench::Comparison(Name("utf8_to_utf16", size, script))
      .Add("library", Converting(utf8_to_utf16, samples, &Sample::utf8, size))
      .Add("plain", Converting(kv::reference::Utf8ToUtf16, samples, &Sample::utf8, size))
      .Add("MultiByteToWideChar", Converting(SystemUtf8ToUtf16, samples, &Sample::utf8, size))
      .Add("limit memcpy", Copying(samples, &Sample::utf16, size));
  kv::bench::Comparison narrowing(Name("utf16_to_utf8", size, script));
  narrowing.Add("library", Converting(utf16_to_utf8, samples, &Sample::utf16, 3 * size))
      .Add("plain", Converting(kv::reference::Utf16ToUtf8, samples, &Sample::utf16, 3 * size))
      .Add("limit memcpy", Copying(samples, &Sample::utf8, size));
  if (SystemNarrowsAlike(script))
    narrowing.Add("WideCharToMultiByte",
                  Converting(SystemUtf16ToUtf8, samples, &Sample::utf16, 3 * size));
}

void CompareLatin1Converters(const Script& script, std::size_t size) {
  const Samples samples(script, size);
  kv::bench::Comparison(Name("isolat1_to_utf8", size, script))
      .Add("library", Converting(isolat1_to_utf8, samples, &Sample::latin1, 2 * size))
      .Add("plain", Converting(kv::reference::Isolat1ToUtf8, samples, &Sample::latin1, 2 * size))
      .Add("limit memcpy", Copying(samples, &Sample::utf8, size));
  kv::bench::Comparison(Name("utf8_to_isolat1", size, script))
      .Add("library", Converting(utf8_to_isolat1, samples, &Sample::utf8, size))
      .Add("plain", Converting(kv::reference::Utf8ToIsolat1, samples, &Sample::utf8, size))
      .Add("limit memcpy", Copying(samples, &Sample::latin1, size));
}

template <typename Out, typename In>
void CompareMeasuring(const std::string& operation, const Samples& samples, TextOf<In> input,
                      Converter<Out, In> library, Converter<Out, In> plain) {
  kv::bench::Comparison(operation)
      .Add("library", Measuring(library, samples, input))
      .Add("plain", Measuring(plain, samples, input));
}

void CompareMeasuring(const Script& script, std::size_t size) {
  const Samples samples(script, size);
  CompareMeasuring(Name("utf8_to_utf16 measuring", size, script), samples, &Sample::utf8,
                   utf8_to_utf16, kv::reference::Utf8ToUtf16);
  CompareMeasuring(Name("utf16_to_utf8 measuring", size, script), samples, &Sample::utf16,
                   utf16_to_utf8, kv::reference::Utf16ToUtf8);
  if (!samples.All()[0].latin1.empty())
    CompareMeasuring(Name("isolat1_to_utf8 measuring", size, script), samples, &Sample::latin1,
                     isolat1_to_utf8, kv::reference::Isolat1ToUtf8);
}

void CompareWideTexts(const Script& script, std::size_t size) {
  const Samples samples(script, size);
  for (const bool isUtf8 : {true, false}) {
    const auto input = isUtf8 ? &Sample::utf8 : &Sample::latin1;
    const auto widening = [&](std::wstring (*convert)(const char*, bool)) {
      return [convert = kv::bench::Opaque(convert), samples = samples, input, isUtf8]() mutable {
        return convert((samples.Next().*input).c_str(), isUtf8);
      };
    };
    const std::string name = isUtf8 ? "Ascii2Unicode" : "Ascii2Unicode of Latin-1";
    kv::bench::Comparison(Name(name.c_str(), size, script))
        .Add("library", widening(Ascii2Unicode))
        .Add("plain", widening(kv::reference::Ascii2Unicode))
        .Add("limit std::wstring", [samples = samples]() mutable {
          const std::wstring& result = samples.Next().utf16;
          return std::wstring(result.data(), result.size());
        });
  }
}

// All of the converters give the result, and those that can measure its size.
template <typename Out, typename In>
void CheckConverters(const std::vector<Converter<Out, In>>& converters,
                     const std::basic_string<In>& in, const std::basic_string<Out>& result,
                     const char* what) {
  for (const Converter<Out, In> convert : converters) {
    std::basic_string<Out> out(3 * in.size(), Out());
    int room = Size(out);
    const int size = convert(out.data(), room, in.data(), Size(in));
    kv::bench::Require(size == Size(result), what);
    out.resize(result.size());
    kv::bench::Require(out == result, what);
  }
}

template <typename Out, typename In>
void CheckMeasuring(Converter<Out, In> convert, const std::basic_string<In>& in, int expected) {
  int size = 0;
  kv::bench::Require(convert(nullptr, size, in.data(), Size(in)) == -1, "measuring");
  kv::bench::Require(size == expected, "the size measured");
}

std::string Narrowed(const std::wstring& utf16) {
  std::string utf8(3 * utf16.size(), '\0');
  int room = Size(utf8);
  const int size = kv::reference::Utf16ToUtf8(utf8.data(), room, utf16.data(), Size(utf16));
  utf8.resize(static_cast<std::size_t>(size));
  return utf8;
}

void CheckSample(const Sample& sample, const Script& script) {
  const std::string narrowed = Narrowed(sample.utf16);
  CheckConverters<wchar_t, char>({utf8_to_utf16, kv::reference::Utf8ToUtf16, SystemUtf8ToUtf16},
                                 sample.utf8, sample.utf16, "UTF-16");
  CheckConverters<char, wchar_t>({utf16_to_utf8}, sample.utf16, narrowed, "UTF-8");
  if (SystemNarrowsAlike(script))
    CheckConverters<char, wchar_t>({SystemUtf16ToUtf8}, sample.utf16, narrowed, "UTF-8");
  CheckMeasuring(utf8_to_utf16, sample.utf8, Size(sample.utf16));
  CheckMeasuring(utf16_to_utf8, sample.utf16, Size(narrowed));
  kv::bench::Require(Ascii2Unicode(sample.utf8.c_str(), true) == sample.utf16, "Ascii2Unicode");
}

void CheckLatin1Sample(const Sample& sample) {
  CheckConverters<char, char>({isolat1_to_utf8, kv::reference::Isolat1ToUtf8}, sample.latin1,
                              sample.utf8, "UTF-8 of Latin-1");
  CheckConverters<char, char>({utf8_to_isolat1}, sample.utf8, sample.latin1, "Latin-1");
  CheckMeasuring(isolat1_to_utf8, sample.latin1, Size(sample.utf8));
  kv::bench::Require(Ascii2Unicode(sample.latin1.c_str(), false) ==
                         kv::reference::Ascii2Unicode(sample.latin1.c_str(), false),
                     "Ascii2Unicode of Latin-1");
}

}  // namespace

void kv::bench::CheckAgreement() {
  for (const auto& [script, sizes] : kKinds) {
    for (const std::size_t size : sizes) {
      const Samples samples(script, size);
      for (const Sample& sample : samples.All()) {
        CheckSample(sample, script);
        if (!sample.latin1.empty()) CheckLatin1Sample(sample);
      }
    }
  }
}

void kv::bench::RegisterComparisons() {
  const auto compare = [](const auto& kinds, void (*comparison)(const Script&, std::size_t)) {
    for (const auto& [script, sizes] : kinds) {
      for (const std::size_t size : sizes) comparison(script, size);
    }
  };
  compare(kKinds, CompareConverters);
  compare(kMeasuredKinds, CompareMeasuring);
  compare(kLatin1Kinds, CompareLatin1Converters);
  compare(kWideTextKinds, CompareWideTexts);
}
