// usage: planted_bugs NAME     has the bug of that name
// The sanitized build has to find each of these.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "utils/text/text.h"

namespace {

// Values and places of which the compiler knows nothing.
template <typename Type>
Type Opaque(Type value) {
  static volatile Type hidden;
  hidden = value;
  return hidden;
}

constexpr std::size_t kSize = 20;
volatile char g_sink;

void ReadAt(const char* begin, std::ptrdiff_t offset) { g_sink = Opaque(begin)[Opaque(offset)]; }
void WriteAt(char* begin, std::ptrdiff_t offset) { Opaque(begin)[Opaque(offset)] = 'x'; }

char g_text[kSize];

struct Flag {
  bool isSet;
};

struct Bug {
  std::string_view name;
  void (*have)();
};

constexpr Bug kBugs[] = {
    {"none",
     [] {
       std::vector<std::string> texts(100, std::string(kSize, 'a'));
       texts.erase(texts.begin());
       try {
         g_sink = texts.at(Opaque(kSize * kSize))[0];
       } catch (const std::exception&) {
         g_sink = texts.back().back();
       }
       char stack[kSize] = {};
       for (std::size_t i = 0; i < kSize; ++i) stack[i] = g_text[i];
       g_sink = stack[Opaque(kSize - 1)];
     }},

    {"stack read over",
     [] {
       char text[kSize] = {};
       ReadAt(text, kSize);
     }},
    {"stack read under",
     [] {
       char text[kSize] = {};
       ReadAt(text, -1);
     }},
    {"stack write over",
     [] {
       char text[kSize];
       WriteAt(text, kSize);
     }},
    {"stack write under",
     [] {
       char text[kSize];
       WriteAt(text, -1);
     }},
    {"global read over", [] { ReadAt(g_text, kSize); }},
    {"global write over", [] { WriteAt(g_text, kSize); }},
    {"heap read over", [] { ReadAt(std::vector<char>(kSize).data(), kSize); }},
    {"heap read under", [] { ReadAt(std::vector<char>(kSize).data(), -1); }},
    {"heap write over", [] { WriteAt(std::vector<char>(kSize).data(), kSize); }},
    {"heap write under", [] { WriteAt(std::vector<char>(kSize).data(), -1); }},
    {"empty block read",
     [] {
       void* const block = Opaque(std::malloc(Opaque(kSize - kSize)));
       ReadAt(static_cast<char*>(block), 0);
     }},
    {"text read over", [] { ReadAt(std::string(kSize, 'a').c_str(), kSize + 1); }},

    {"read after release",
     [] {
       char* const block = Opaque(static_cast<char*>(std::malloc(kSize)));
       std::free(block);
       ReadAt(Opaque(block), 0);
     }},
    {"write after release",
     [] {
       char* const block = Opaque(new char[kSize]);
       delete[] block;
       WriteAt(Opaque(block), kSize - 1);
     }},
    {"read out of scope",
     [] {
       const char* text = nullptr;
       {
         char scoped[kSize] = {};
         text = Opaque(&scoped[0]);
       }
       ReadAt(text, 0);
     }},
    {"double release",
     [] {
       char* const block = Opaque(new char[kSize]);
       delete[] block;
       delete[] Opaque(block);
     }},
    {"inner release", [] { std::free(Opaque(static_cast<char*>(std::malloc(kSize))) + 16); }},
    {"stack release",
     [] {
       char text[kSize];
       std::free(Opaque(&text[0]));
     }},

    {"MultiByteToWideChar",
     [] {
       std::vector<wchar_t> wide(4);
       ::MultiByteToWideChar(CP_UTF8, 0, "abcdefgh", 8, wide.data(), 8);
     }},
    {"WideCharToMultiByte",
     [] {
       std::vector<char> text(4);
       ::WideCharToMultiByte(CP_UTF8, 0, L"abcdefgh", 8, text.data(), 8, nullptr, nullptr);
     }},
    {"ReadFile",
     [] {
       std::vector<char> text(4);
       ::ReadFile(::GetStdHandle(STD_INPUT_HANDLE), text.data(), 5, nullptr, nullptr);
     }},
    {"GetCurrentDirectoryW",
     [] {
       std::vector<wchar_t> path(4);
       ::GetCurrentDirectoryW(MAX_PATH, path.data());
     }},
    {"fgets",
     [] {
       std::vector<char> line(4);
       std::fgets(line.data(), Opaque(5), stdin);
     }},
    {"memcpy",
     [] {
       std::vector<char> to(kSize);
       std::memcpy(to.data(), g_text + 1, Opaque(kSize));
     }},
    {"std::string",
     [] {
       const std::vector<char> bytes(kSize);
       g_sink = std::string("begins so").append(bytes.data(), Opaque(kSize + 1)).back();
     }},
    {"the library", [] { UpperString(std::vector<char>(kSize, 'a').data()); }},

    {"signed overflow", [] { g_sink = static_cast<char>(Opaque(INT_MAX) + Opaque(1)); }},
    {"shift", [] { g_sink = static_cast<char>(Opaque(1) << Opaque(32)); }},
    {"division by zero", [] { g_sink = static_cast<char>(Opaque(1) / Opaque(0)); }},
    {"float to int", [] { g_sink = static_cast<char>(static_cast<int>(Opaque(1e10))); }},
    {"null", [] { g_sink = *Opaque(static_cast<char*>(nullptr)); }},
    {"alignment",
     [] {
       alignas(int) char bytes[kSize] = {};
       g_sink = static_cast<char>(*reinterpret_cast<int*>(Opaque(&bytes[1])));
     }},
    {"index",
     [] {
       const char text[kSize] = {};
       g_sink = text[Opaque(kSize)];
     }},
    {"bool",
     [] {
       Flag flag = {};
       std::memset(&flag, Opaque(2), sizeof flag);
       g_sink = *Opaque(&flag.isSet) ? 'y' : 'n';
     }},
};

}  // namespace

int main(int count, char** arguments) {
  for (const Bug& bug : kBugs) {
    if (count == 2 && bug.name == arguments[1]) {
      bug.have();
      std::puts("not found");
      return 0;
    }
  }
  std::fputs("planted_bugs knows no such bug\n", stderr);
  return 1;
}
