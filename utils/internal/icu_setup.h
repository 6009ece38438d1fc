// ICU made safe from memory that runs out. Some of its functions end in a crash then, and what
// fails at its first use stays failed as long as the process lives.
#ifndef KVUTILS_UTILS_INTERNAL_ICU_SETUP_H_
#define KVUTILS_UTILS_INTERNAL_ICU_SETUP_H_

namespace kv::internal {

// Comes before all else that is asked of ICU, from any thread: the first call has ICU set itself
// up, with a reserve of memory.
void SetUpIcu();

// For its life, ICU gets memory of a reserve for this thread where the system has none. One thread
// at a time; another one meanwhile goes without.
class IcuReserve {
 public:
  IcuReserve();
  IcuReserve(const IcuReserve&) = delete;
  IcuReserve& operator=(const IcuReserve&) = delete;
  ~IcuReserve();

  // Whether the system has refused memory to ICU since, to any thread.
  [[nodiscard]] bool IsNeeded() const;

 private:
  bool isHeld_;
  unsigned refusals_;
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_ICU_SETUP_H_
