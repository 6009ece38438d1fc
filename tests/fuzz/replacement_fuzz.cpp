// The replacement of a text in another beside the search for one place after the other.
#include <string>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

std::string Replaced(const std::string& text, const std::string& find, const std::string& repl,
                     int& count) {
  std::string replaced;
  count = 0;
  std::size_t begin = 0;
  while (!find.empty()) {
    const std::size_t place = text.find(find, begin);
    if (place == std::string::npos) break;
    replaced += text.substr(begin, place - begin) + repl;
    begin = place + find.size();
    ++count;
  }
  return replaced + text.substr(begin);
}

void CheckBuffer(const std::string& text, const std::string& find, const std::string& repl,
                 const std::string& expected, int bufSize) {
  if (bufSize < static_cast<int>(text.size())) return;
  const bool fits = static_cast<int>(expected.size()) <= bufSize;
  std::string content = text + '\0';
  content.resize(static_cast<std::size_t>(bufSize) + 1, 'x');
  const GuardedCopy<char> buffer(content);
  const GuardedText guardedFind(find);
  const GuardedText guardedRepl(repl);
  Expect("result", ReplaceSubstring(buffer.Get(), bufSize, guardedFind.Get(), guardedRepl.Get()),
         fits ? static_cast<int>(expected.size()) : -1);
  Expect("text", std::string(buffer.Get()), fits ? expected : text);
}

void Check(Input input) {
  const int room = input.Between(0, 255);
  const std::string find = input.Text();
  const std::string repl = input.Text();
  const std::string text(input.Rest());
  int count = 0;
  std::string replaced = text;
  const std::string expected = Replaced(text, find, repl, count);
  Expect("count", findAndReplace(replaced, find.c_str(), repl.c_str()), count);
  Expect("string", replaced, expected);

  const std::string terminated = text.c_str();
  const std::string inBuffer = Replaced(terminated, find, repl, count);
  const auto size = static_cast<int>(inBuffer.size());
  for (const int bufSize : {room, size - 1, size, size + 1, size + 512}) {
    CheckBuffer(terminated, find, repl, inBuffer, bufSize);
  }
}

const Registration kTarget({.name = "replacement",
                            .check = Check,
                            .seeds = {std::string("a\0aa\0aaa banana \3", 17),
                                      std::string("_new\0\0stars_new.bin \x20", 21),
                                      std::string("&amp;\0&\0Planets&amp;Moons &amp;\x20", 32)}});

}  // namespace
}  // namespace kv::fuzz
