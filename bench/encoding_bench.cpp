// Texts between UTF-8, UTF-16 and Latin-1. Short texts are many different ones in turn, so that the
// processor does not learn where the characters of one text stand.
#include <windows.h>

#include <cstddef>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "tests/reference/encoding.h"
#include "utils/text/text.h"

namespace {

// A script: so many percent of its characters are its own, the others ASCII.
struct Script {
  const char* name;
  unsigned percent;
  const char* lead;  // its characters without their last byte
};

constexpr Script kScripts[] = {
    {"ASCII", 0, ""}, {"Latin", 8, "\xC3"}, {"Cyrillic", 85, "\xD0"}, {"Japanese", 95, "\xE3\x81"}};
constexpr Script kAscii = kScripts[0];

std::string Text(const Script& script, std::size_t size, std::mt19937& random) {
  std::string text;
  while (text.size() < size) {
    if (random() % 100 < script.percent && text.size() + std::strlen(script.lead) < size) {
      text += script.lead;
      text += static_cast<char>(0x80 + random() % 64);
    } else {
      text += static_cast<char>(script.percent > 50 ? ' ' : 'a' + random() % 26);
    }
  }
  return text;
}

// Texts of one script and size, each in all encodings.
struct Sample {
  std::string utf8;
  std::wstring utf16;
};

constexpr std::size_t kManyBytes = 1U << 20;

class Samples {
 public:
  Samples(const Script& script, std::size_t size) {
    std::mt19937 random(20240229);
    const std::size_t count = size < kManyBytes ? 64 : 1;
    for (std::size_t i = 0; i < count; ++i) {
      const std::string utf8 = Text(script, size, random);
      samples_.push_back({utf8, kv::reference::Ascii2Unicode(utf8.c_str(), true)});
    }
  }

  const Sample& Next() { return samples_[next_++ % samples_.size()]; }
  [[nodiscard]] const std::vector<Sample>& All() const { return samples_; }

 private:
  std::vector<Sample> samples_;
  std::size_t next_ = 0;
};

constexpr std::size_t kSizes[] = {8, 30, 60, 200, kManyBytes};

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

using Widening = int (*)(wchar_t*, int&, const char*, int);
using Narrowing = int (*)(char*, int&, const wchar_t*, int);

// A converter as a form: the next of the samples into a buffer with room for the worst.
auto Widen(Widening convert, const Samples& samples, std::size_t size) {
  return [convert, samples = samples, out = std::wstring(size, L'\0')]() mutable {
    const std::string& in = samples.Next().utf8;
    int room = static_cast<int>(out.size());
    return convert(out.data(), room, in.data(), static_cast<int>(in.size()));
  };
}

auto Narrow(Narrowing convert, const Samples& samples, std::size_t size) {
  return [convert, samples = samples, out = std::string(3 * size, '\0')]() mutable {
    const std::wstring& in = samples.Next().utf16;
    int room = static_cast<int>(out.size());
    return convert(out.data(), room, in.data(), static_cast<int>(in.size()));
  };
}

void CompareConverters(const Script& script, std::size_t size) {
  const Samples samples(script, size);
  kv::bench::Comparison(Name("utf8_to_utf16", size, script))
      .Add("library", Widen(utf8_to_utf16, samples, size))
      .Add("plain", Widen(kv::reference::Utf8ToUtf16, samples, size))
      .Add("MultiByteToWideChar", Widen(SystemUtf8ToUtf16, samples, size))
      .Add("limit memcpy", [samples = samples, out = std::wstring(size, L'\0')]() mutable {
        const std::wstring& result = samples.Next().utf16;
        return std::memcpy(out.data(), result.data(), result.size() * sizeof(wchar_t));
      });
  kv::bench::Comparison(Name("utf16_to_utf8", size, script))
      .Add("library", Narrow(utf16_to_utf8, samples, size))
      .Add("plain", Narrow(kv::reference::Utf16ToUtf8, samples, size))
      .Add("WideCharToMultiByte", Narrow(SystemUtf16ToUtf8, samples, size))
      .Add("limit memcpy", [samples = samples, out = std::string(size, '\0')]() mutable {
        const std::string& result = samples.Next().utf8;
        return std::memcpy(out.data(), result.data(), result.size());
      });
}

void CompareWideTexts(std::size_t size) {
  const Samples samples(kAscii, size);
  for (const bool isUtf8 : {true, false}) {
    const std::string name = isUtf8 ? "Ascii2Unicode" : "Ascii2Unicode of Latin-1";
    kv::bench::Comparison(Name(name.c_str(), size, kAscii))
        .Add("library",
             [samples = samples, isUtf8]() mutable {
               return Ascii2Unicode(samples.Next().utf8.c_str(), isUtf8).size();
             })
        .Add("plain",
             [samples = samples, isUtf8]() mutable {
               return kv::reference::Ascii2Unicode(samples.Next().utf8.c_str(), isUtf8).size();
             })
        .Add("limit std::wstring", [samples = samples]() mutable {
          const std::wstring& result = samples.Next().utf16;
          std::wstring copy(result.data(), result.size());
          benchmark::DoNotOptimize(copy.data());
          return copy.size();
        });
  }
}

void CheckSample(const Sample& sample) {
  const int bytes = static_cast<int>(sample.utf8.size());
  const int units = static_cast<int>(sample.utf16.size());
  for (const Widening convert : {utf8_to_utf16, kv::reference::Utf8ToUtf16, SystemUtf8ToUtf16}) {
    std::wstring out(sample.utf8.size(), L'\0');
    int room = bytes;
    kv::bench::Require(convert(out.data(), room, sample.utf8.data(), bytes) == units, "units");
    out.resize(sample.utf16.size());
    kv::bench::Require(out == sample.utf16, "UTF-16");
  }
  for (const Narrowing convert : {utf16_to_utf8, kv::reference::Utf16ToUtf8, SystemUtf16ToUtf8}) {
    std::string out(3 * sample.utf8.size(), '\0');
    int room = static_cast<int>(out.size());
    kv::bench::Require(convert(out.data(), room, sample.utf16.data(), units) == bytes, "bytes");
    out.resize(sample.utf8.size());
    kv::bench::Require(out == sample.utf8, "UTF-8");
  }
  kv::bench::Require(Ascii2Unicode(sample.utf8.c_str(), true) == sample.utf16, "Ascii2Unicode");
}

}  // namespace

void kv::bench::CheckAgreement() {
  for (const Script& script : kScripts) {
    for (const std::size_t size : kSizes) {
      const Samples samples(script, size);
      for (const Sample& sample : samples.All()) CheckSample(sample);
    }
  }
}

void kv::bench::RegisterComparisons() {
  for (const Script& script : kScripts) {
    for (const std::size_t size : kSizes) CompareConverters(script, size);
  }
  for (const std::size_t size : {60U, 200U}) CompareWideTexts(size);
}
