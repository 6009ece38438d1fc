#include "utils/platform/platform.h"

#include "utils/internal/wide_path.h"
#include "utils/internal/win32.h"
#include "utils/paths/paths.h"

#include <optional>
#include <string>
#include <string_view>

namespace {

using kv::internal::UniqueKernelHandle;
using kv::internal::WidePath;

// The system's limit, in UTF-16 units, terminator included.
constexpr std::size_t kCommandLineCapacity = 32767;

// Where the archive goes: `destFolder` with a "\" at its end, or without one the archive's own
// folder, which has none at its end. Nothing for an archive without a folder.
std::optional<std::string> Destination(std::string_view archivePath, const char* destFolder) {
  if (destFolder != nullptr) {
    std::string destination = destFolder;
    if (!destination.ends_with('\\')) destination += '\\';
    return destination;
  }
  const std::size_t lastSeparator = archivePath.rfind('\\');
  if (lastSeparator == std::string_view::npos) return std::nullopt;
  return std::string(archivePath.substr(0, lastSeparator));
}

// Runs a program without a window, in the caller's folder and environment, and waits for its end.
// False when it does not start.
bool RunToItsEnd(std::wstring_view commandLine) {
  if (commandLine.size() >= kCommandLineCapacity) return false;
  std::wstring writable(commandLine);  // the system may write into it
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started = {};
  if (::CreateProcessW(nullptr, writable.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                       nullptr, &startup, &started) == FALSE) {
    return false;
  }
  const UniqueKernelHandle process(started.hProcess);
  const UniqueKernelHandle thread(started.hThread);
  ::WaitForSingleObject(process.Get(), INFINITE);
  return true;
}

}  // namespace

bool UnzipFile(const char* archivePath, const char* destFolder) {
  if (archivePath == nullptr) return false;
  const auto destination = Destination(archivePath, destFolder);
  if (!destination) return false;

  // Callers rely on the paths being passed without quotes, and on the program being searched for.
  const std::string text = "unzip.exe -q -u -d " + *destination + " " + archivePath;
  const WidePath commandLine(text.c_str());
  if (commandLine.IsEmpty()) return false;  // malformed UTF-8 in a path

  // Callers rely on the folder being made ready as it is given: without a "\" at its end it is the
  // program that creates its last level.
  if (destFolder != nullptr) CheckFileFolder(destFolder);
  return RunToItsEnd(commandLine.View());
}
