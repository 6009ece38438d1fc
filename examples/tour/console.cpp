#include "examples/tour/console.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

namespace tour {

void PrepareConsole() {
  ::SetConsoleOutputCP(CP_UTF8);
  ::_setmode(::_fileno(stdout), _O_BINARY);
  ::_setmode(::_fileno(stderr), _O_BINARY);
  std::setvbuf(stdout, nullptr, _IOFBF, 1U << 16U);  // a console is drawn page by page
}

}  // namespace tour
