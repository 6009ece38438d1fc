#include "tests/sanitizer/report.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/sanitizer/globals.h"

namespace kv::sanitizer {
namespace {

// A text that grows up to its capacity; what goes beyond is left out.
class Message {
 public:
  [[gnu::format(printf, 2, 3)]] void Add(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int size = std::vsnprintf(text_ + size_, sizeof text_ - size_, format, arguments);
    va_end(arguments);
    if (size > 0) size_ += static_cast<std::size_t>(size);
    if (size_ >= sizeof text_) size_ = sizeof text_ - 1;
  }

  void WriteTo(HANDLE file) const {
    DWORD written = 0;
    ::WriteFile(file, text_, static_cast<DWORD>(size_), &written, nullptr);
  }

 private:
  char text_[4096] = {};
  std::size_t size_ = 0;
};

// The folder in the environment variable KVUTILS_FINDINGS collects the findings of all processes, a
// file each: whoever runs a program may miss what it says and how it ends.
void WriteToFolder(const Message& message) {
  constexpr DWORD kMaxFolder = 1000;
  wchar_t path[kMaxFolder + 16];
  const DWORD size = ::GetEnvironmentVariableW(L"KVUTILS_FINDINGS", path, kMaxFolder);
  if (size == 0 || size >= kMaxFolder) return;
  ::_snwprintf(path + size, 16, L"\\%lu.txt", ::GetCurrentProcessId());
  const HANDLE file = ::CreateFileW(path, FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  message.WriteTo(file);
  ::CloseHandle(file);
}

[[noreturn]] void End(const Message& message, unsigned exitCode) {
  message.WriteTo(::GetStdHandle(STD_ERROR_HANDLE));
  WriteToFolder(message);
  ::TerminateProcess(::GetCurrentProcess(), exitCode);
  std::abort();  // not reached
}

// A place in the code as addr2line takes it: the module, and the distance from its beginning.
void AddPlace(Message& message, DWORD64 address) {
  HMODULE module = nullptr;
  char path[MAX_PATH] = "";
  if (::GetModuleHandleExA(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          reinterpret_cast<const char*>(address), &module)) {
    ::GetModuleFileNameA(module, path, sizeof path);
  }
  const char* const slash = std::strrchr(path, '\\');
  message.Add("  at %s+0x%llx\n", slash == nullptr ? "?" : slash + 1,
              address - reinterpret_cast<DWORD64>(module));
}

// The calls that led to `context`. Those before the one that `caller` lies in are this library's
// own.
void AddCalls(Message& message, CONTEXT context, DWORD64 caller) {
  constexpr int kFrames = 24;
  bool isToBlame = caller == context.Rip;
  for (int frame = 0; frame < kFrames && context.Rip != 0; ++frame) {
    isToBlame = isToBlame || context.Rip == caller;
    if (isToBlame) AddPlace(message, context.Rip);
    DWORD64 image = 0;
    RUNTIME_FUNCTION* const function = ::RtlLookupFunctionEntry(context.Rip, &image, nullptr);
    if (function == nullptr) break;
    void* data = nullptr;
    DWORD64 establisher = 0;
    ::RtlVirtualUnwind(UNW_FLAG_NHANDLER, image, context.Rip, function, &context, &data,
                       &establisher, nullptr);
  }
  if (!isToBlame) AddPlace(message, caller);
}

void AddCallsHere(Message& message, const void* caller) {
  CONTEXT context;
  ::RtlCaptureContext(&context);
  AddCalls(message, context, reinterpret_cast<DWORD64>(caller));
}

const char* NameOf(Poison reason) {
  switch (reason) {
    case kBeforeStackObjects:
    case kBetweenStackObjects:
    case kBehindStackObjects:
      return "outside an object on the stack";
    case kOutOfScope:
      return "of an object on the stack that is out of scope";
    case kGlobalMargin:
      return "outside a global object";
    case kHeapMargin:
    case kEmptyBlock:
      return "outside a block of the heap";
    case kFreed:
      return "of a block of the heap that is released";
  }
  return "of memory that is out of bounds";
}

LONG CALLBACK ReportTrap(EXCEPTION_POINTERS* exception) {
  if (exception->ExceptionRecord->ExceptionCode != STATUS_ILLEGAL_INSTRUCTION) {
    return EXCEPTION_CONTINUE_SEARCH;
  }
  Message message;
  message.Add("sanitizer: undefined behaviour\n");
  AddCalls(message, *exception->ContextRecord, exception->ContextRecord->Rip);
  End(message, static_cast<unsigned>(Finding::kUndefinedBehaviour));
}

}  // namespace

void EndProcess(const char* reason) {
  Message message;
  message.Add("sanitizer: %s\n", reason);
  End(message, static_cast<unsigned>(Finding::kMemory));
}

void ReportMemory(const char* use, Address begin, std::size_t size, const void* caller) {
  Message message;
  const Poison reason = ReasonFor(begin, size);
  message.Add("sanitizer: %s %s, %llu bytes at 0x%llx\n", use, NameOf(reason), size, begin);
  if (reason == kGlobalMargin) {
    const GlobalObject* const object = NearestGlobal(begin);
    if (object != nullptr) message.Add("  near %s of %s\n", object->name, object->source);
  }
  AddCallsHere(message, caller);
  End(message, static_cast<unsigned>(Finding::kMemory));
}

void ReportRelease(const char* fault, const void* block, const void* caller) {
  Message message;
  message.Add("sanitizer: %s, 0x%llx\n", fault, reinterpret_cast<Address>(block));
  AddCallsHere(message, caller);
  End(message, static_cast<unsigned>(Finding::kMemory));
}

void WatchTraps() { ::AddVectoredExceptionHandler(1, ReportTrap); }

}  // namespace kv::sanitizer
