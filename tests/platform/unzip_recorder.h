// The environment variables that tell the stand-in for unzip.exe what to do.
#ifndef KVUTILS_TESTS_PLATFORM_UNZIP_RECORDER_H_
#define KVUTILS_TESTS_PLATFORM_UNZIP_RECORDER_H_

namespace kv::test {

inline constexpr char kRecordFile[] = "KVUTILS_UNZIP_RECORD";       // where it writes the record
inline constexpr char kWatchedFolders[] = "KVUTILS_UNZIP_WATCHED";  // each followed by ";"
inline constexpr char kAnyVariable[] = "KVUTILS_UNZIP_VARIABLE";    // goes into the record
inline constexpr char kCallersEvent[] = "KVUTILS_UNZIP_EVENT";      // a handle, as a number
inline constexpr char kDelay[] = "KVUTILS_UNZIP_DELAY";             // milliseconds
inline constexpr char kExitCode[] = "KVUTILS_UNZIP_EXIT_CODE";
inline constexpr char kCrashes[] = "KVUTILS_UNZIP_CRASHES";  // not empty: in place of an exit code

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PLATFORM_UNZIP_RECORDER_H_
