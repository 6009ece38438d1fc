// The mode bits of MFile by name.
#ifndef KVUTILS_UTILS_INTERNAL_FILE_MODE_H_
#define KVUTILS_UTILS_INTERNAL_FILE_MODE_H_

namespace kv::internal::file_mode {

inline constexpr unsigned kCreate = 1;
inline constexpr unsigned kRead = 2;
inline constexpr unsigned kWrite = 4;
inline constexpr unsigned kReadWriteShared = 8;
inline constexpr unsigned kReadWriteExclusive = 16;
inline constexpr unsigned kShareRead = 32;
inline constexpr unsigned kShareWrite = 64;

inline constexpr unsigned kCreateAnew = kCreate | kWrite;

}  // namespace kv::internal::file_mode

#endif  // KVUTILS_UTILS_INTERNAL_FILE_MODE_H_
