// A function of the test in the place of one that kvutils.dll imports: what the system does seldom,
// such as a read that fails, is done on demand, and calls can be counted.
#ifndef KVUTILS_TESTS_SUPPORT_IMPORT_PATCH_H_
#define KVUTILS_TESTS_SUPPORT_IMPORT_PATCH_H_

namespace kv::test {

// For the life of the object the library's calls of `function`, named as its import table names it,
// go to `replacement`. A function that the library does not import ends the test program.
class ImportPatch {
 public:
  template <typename Function>
  ImportPatch(const char* function, Function* replacement)
      : ImportPatch(function, reinterpret_cast<void*>(replacement)) {}
  ImportPatch(const char* function, void* replacement);
  ~ImportPatch();
  ImportPatch(const ImportPatch&) = delete;
  ImportPatch& operator=(const ImportPatch&) = delete;

  // The function that the library would call without the replacement.
  [[nodiscard]] void* Original() const { return original_; }

 private:
  void** slot_;
  void* original_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_IMPORT_PATCH_H_
