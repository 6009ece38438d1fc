#include "examples/tour/console.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <memory>

namespace tour {
namespace {

// UTF-16 to UTF-8; half a surrogate pair becomes the replacement character.
std::string Narrow(const wchar_t* text) {
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  if (size <= 0) return {};
  std::string narrow(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text, -1, narrow.data(), size, nullptr, nullptr);
  narrow.pop_back();  // the terminator
  return narrow;
}

}  // namespace

void PrepareConsole() {
  ::SetConsoleOutputCP(CP_UTF8);
  ::_setmode(::_fileno(stdout), _O_BINARY);
  ::_setmode(::_fileno(stderr), _O_BINARY);
  std::setvbuf(stdout, nullptr, _IOFBF, 1U << 16U);  // a console is drawn page by page
}

std::vector<std::string> CommandLineArguments() {
  const auto release = [](wchar_t** list) { ::LocalFree(list); };
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(release)> list(
      ::CommandLineToArgvW(::GetCommandLineW(), &count), release);
  std::vector<std::string> arguments;
  for (int i = 1; list && i < count; ++i) arguments.push_back(Narrow(list.get()[i]));
  return arguments;
}

void PrintTitle(const std::string& title) {
  std::printf("\n%s\n%s\n", title.c_str(), std::string(92, '-').c_str());
}

void Complain(const std::string& complaint) {
  FlushOutput();
  std::fprintf(stderr, "tour: %s\n", complaint.c_str());
}

bool FlushOutput() { return std::fflush(stdout) == 0 && std::ferror(stdout) == 0; }

}  // namespace tour
