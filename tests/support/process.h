// A second process for tests that need one: run to its end with its output collected, or kept
// beside the case.
#ifndef KVUTILS_TESTS_SUPPORT_PROCESS_H_
#define KVUTILS_TESTS_SUPPORT_PROCESS_H_

#include <memory>
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

// A variable of the environment, in UTF-8: the C library's getenv gives it in the system's code
// page. Nothing where there is none, or an empty one.
std::string Environment(const std::string& name);
void SetEnvironment(const std::string& name, const std::string& value);

// Runs a program with UTF-8 arguments, in `folder` (the current one when empty) and the caller's
// environment. Output goes through files in the temporary folder, so it may be of any length.
ProcessResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& folder = "");

// Runs the same test program on one of its cases, which may be named DISABLED_ to stay out of the
// ordinary run.
ProcessResult RunOwnCase(const std::string& filter);

// A second process that does its part while the case goes on: it holds a file open, a mutex, the
// clipboard. It says when it is ready; it ends when it is told to, at the latest with this object.
//
//   const BackgroundProcess holder = BackgroundProcess::OwnCase("LockChild.DISABLED_Holds");
//   ... what the case is about ...
//
// and in the child: take hold, SayReady(), AwaitRelease(), let go.
class BackgroundProcess {
 public:
  // Starts a program as RunProgram does, and waits until it has called SayReady. One that ends
  // before, or takes longer than a minute, ends the test program with a message.
  BackgroundProcess(const std::string& program, const std::vector<std::string>& arguments,
                    const std::string& folder = "");
  // The same test program on one of its cases, as RunOwnCase runs it.
  static BackgroundProcess OwnCase(const std::string& filter);
  ~BackgroundProcess();  // ends the process at once
  BackgroundProcess(const BackgroundProcess&) = delete;
  BackgroundProcess& operator=(const BackgroundProcess&) = delete;

  // Lets AwaitRelease return, waits for the end of the process (a minute at most; then it is ended)
  // and gives its results. To be called once.
  ProcessResult Finish();
  // Ends the process at once, as a crash or the user would.
  void Terminate();

 private:
  struct Child;

  std::unique_ptr<Child> child_;
};

// For the child: tells the parent that it is ready, and waits until the parent releases it (a
// minute at most). Neither does anything in a process that is not a BackgroundProcess.
void SayReady();
void AwaitRelease();

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_PROCESS_H_
