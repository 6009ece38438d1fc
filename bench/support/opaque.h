// A function of the program called as one of a library is: by a pointer that the optimiser does not
// see through. Neither is its body taken into the caller, nor does a constant argument or a result
// that is not used save anything of it.
#ifndef KVUTILS_BENCH_SUPPORT_OPAQUE_H_
#define KVUTILS_BENCH_SUPPORT_OPAQUE_H_

#include <utility>

namespace kv::bench {

template <typename Result, typename... Parameters>
class Opaque {
 public:
  explicit Opaque(Result (*function)(Parameters...)) : function_(function) {}

  Result operator()(Parameters... arguments) const {
    return function_(std::forward<Parameters>(arguments)...);
  }

 private:
  Result (*volatile function_)(Parameters...);
};

}  // namespace kv::bench

#endif  // KVUTILS_BENCH_SUPPORT_OPAQUE_H_
