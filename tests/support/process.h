// A second process for tests that need one, run to its end with its output collected.
#ifndef KVUTILS_TESTS_SUPPORT_PROCESS_H_
#define KVUTILS_TESTS_SUPPORT_PROCESS_H_

#include <string>
#include <vector>

namespace kv::test {

struct ProcessResult {
  unsigned long exitCode = 0;
  std::string out;  // standard output, byte for byte
  std::string err;  // standard error
};

// The folder of the running test program, where the DLL and the example programs lie; ends in "\".
std::string ProgramFolder();

void SetEnvironment(const std::string& name, const std::string& value);

// Runs a program with UTF-8 arguments, in `folder` (the current one when empty) and the caller's
// environment. Output goes through files in the temporary folder, so it may be of any length.
ProcessResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& folder = "");

// Runs the same test program on one of its cases, which may be named DISABLED_ to stay out of the
// ordinary run.
ProcessResult RunOwnCase(const std::string& filter);

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_PROCESS_H_
