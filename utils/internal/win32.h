// The one road to windows.h: version, lean set of names, and the RAII handle types of the library.
#ifndef KVUTILS_UTILS_INTERNAL_WIN32_H_
#define KVUTILS_UTILS_INTERNAL_WIN32_H_

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0601
#endif

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include <utility>

namespace kv::internal {

// Owns one system object. Traits give its handle type, its own invalid value and how it is closed.
// Closing keeps the calling thread's last error, so a destructor never hides why a call failed.
template <typename Traits>
class UniqueResource {
 public:
  using Handle = typename Traits::Handle;

  UniqueResource() = default;
  explicit UniqueResource(Handle handle) : handle_(handle) {}
  UniqueResource(UniqueResource&& other) noexcept : handle_(other.Release()) {}
  UniqueResource& operator=(UniqueResource&& other) noexcept {
    if (this != &other) Reset(other.Release());
    return *this;
  }
  UniqueResource(const UniqueResource&) = delete;
  UniqueResource& operator=(const UniqueResource&) = delete;
  ~UniqueResource() { Reset(); }

  [[nodiscard]] Handle Get() const { return handle_; }
  [[nodiscard]] explicit operator bool() const { return handle_ != Traits::Invalid(); }

  [[nodiscard]] Handle Release() { return std::exchange(handle_, Traits::Invalid()); }

  void Reset(Handle handle = Traits::Invalid()) {
    const Handle old = std::exchange(handle_, handle);
    if (old == Traits::Invalid()) return;
    const DWORD lastError = ::GetLastError();
    Traits::Close(old);
    ::SetLastError(lastError);
  }

 private:
  Handle handle_ = Traits::Invalid();
};

// Mutexes, processes, threads: kernel objects whose invalid value is null.
struct KernelHandleTraits {
  using Handle = HANDLE;
  static Handle Invalid() { return nullptr; }
  static void Close(Handle handle) { ::CloseHandle(handle); }
};
using UniqueKernelHandle = UniqueResource<KernelHandleTraits>;

// Open files and folders.
struct FileHandleTraits {
  using Handle = HANDLE;
  static Handle Invalid() { return INVALID_HANDLE_VALUE; }
  static void Close(Handle handle) { ::CloseHandle(handle); }
};
using UniqueFileHandle = UniqueResource<FileHandleTraits>;

// Listings of folders.
struct FindHandleTraits {
  using Handle = HANDLE;
  static Handle Invalid() { return INVALID_HANDLE_VALUE; }
  static void Close(Handle handle) { ::FindClose(handle); }
};
using UniqueFindHandle = UniqueResource<FindHandleTraits>;

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_WIN32_H_
