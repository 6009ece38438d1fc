// The clipboard as other programs see it: a second process reads and writes it with plain Windows
// calls, byte for byte. All processes of a prefix share one clipboard, so nothing else runs beside
// these cases.
#ifndef KVUTILS_TESTS_PLATFORM_CLIPBOARD_FIXTURE_H_
#define KVUTILS_TESTS_PLATFORM_CLIPBOARD_FIXTURE_H_

#include <optional>
#include <string>
#include <string_view>

#include "tests/support/process.h"
#include "tests/support/sandbox.h"

namespace kv::test {

class Clipboard : public Sandbox {
 protected:
  // Each case starts with an empty clipboard.
  Clipboard() { PutNothing(); }

  // What the clipboard holds afterwards is what is named here and nothing else.
  void PutNothing();
  void PutBlock(unsigned format, std::string_view bytes);
  void PutUnicodeText(std::wstring_view units);  // without a terminator of its own

  // The whole block that the clipboard holds for a format, beyond any terminator.
  std::optional<std::string> Block(unsigned format);
  std::optional<std::string> UnicodeText();
  std::optional<std::string> Html();

  // A process that keeps the clipboard open, and with it everybody else out, while it lives.
  BackgroundProcess HoldOpen();

  static unsigned HtmlFormat();

 private:
  std::string BlockFile() const { return Root() + "block"; }
  void RunChild(const std::string& name, unsigned format);
};

// The bytes of UTF-16 units as they lie in memory.
std::string Bytes(std::wstring_view units);

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PLATFORM_CLIPBOARD_FIXTURE_H_
