#include "utils/internal/fail_fast.h"

#include "utils/internal/win32.h"

#include <cstdlib>

namespace kv::internal {

void FailFast(FatalError error) {
  // RaiseFailFastException may start a reporter that asks the user, and Wine's gives a code of its
  // own whatever the exception record says.
  ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(error));
  std::abort();  // not reached
}

}  // namespace kv::internal
