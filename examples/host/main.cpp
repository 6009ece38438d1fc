// Shows a text of the installation in the current folder.
#include <cstdio>

#include "utils/files/files.h"
#include "utils/paths/paths.h"

int main() {
  KelvarisPath resolver;  // the first one in the process finds the folders
  const char* path = resolver.GetPath("media:welcome.txt");
  MTextFile text(true);  // lines come without the white space at their ends
  if (path == nullptr || !text.Open(path, false)) {
    std::fprintf(stderr, "no media:welcome.txt in %s\n", resolver.GetWorkFolder());
    return 1;
  }
  std::printf("%s\n", path);
  char line[256];
  while (text.Readln(line, sizeof line) >= 0) std::printf("  %s\n", line);
  KelvarisPath::Done();
  return 0;
}
