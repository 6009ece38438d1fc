#include "utils/paths/paths.h"

#include "utils/internal/wide_path.h"
#include "utils/internal/win32.h"

#include <string_view>

using kv::internal::WidePath;

void RenameUpdatedFiles(const char* folder) {
  if (folder == nullptr || *folder == '\0') return;
  constexpr std::string_view kUpdateMark = "_new";
  FindFiles found(folder, "*.*");
  found.Run(false);
  for (unsigned int i = 0; i < found.GetNumberFiles(); ++i) {
    const std::string path = found.GetSourceFile(i);
    const std::size_t mark = path.find(kUpdateMark);
    if (mark == std::string::npos) continue;
    const std::string plain = std::string(path).erase(mark, kUpdateMark.size());
    ::MoveFileExW(WidePath(path.c_str()).Get(), WidePath(plain.c_str()).Get(),
                  MOVEFILE_REPLACE_EXISTING);
  }
}
