// What the library does with the world outside, as steps that can be repeated under faults.
#ifndef KVUTILS_TESTS_FAULTS_OPERATIONS_H_
#define KVUTILS_TESTS_FAULTS_OPERATIONS_H_

#include <functional>
#include <string>
#include <vector>

namespace kv::test {

// Works in the current folder. An outcome is a text that tells results and what they were read or
// written as; an exception is told in it.
struct Operation {
  std::string name;
  std::function<void()> prepare;     // what the operation needs on disk
  std::function<std::string()> run;  // the library's calls
  std::string clean;                 // the outcome where nothing fails
  std::string outcomes;              // a regular expression of all that the interface allows
};

std::vector<Operation> FileOperations();
std::vector<Operation> FolderOperations();
std::vector<Operation> DataOperations();  // data names, lists, registry, records
std::vector<Operation> TextOperations();
std::vector<Operation> PlatformOperations();  // what touches only the process itself
std::vector<Operation> ClipboardOperations();

// An operation's outcome, exceptions included.
std::string OutcomeOf(const Operation& operation);

// The library as it is when a program begins: nothing found, remembered or chosen.
void ForgetEverything();

// Of the sandbox, without a "\" at its end.
std::string DocumentsFolder();
// The content of a file, or "none".
std::string ContentOf(const std::string& path);

}  // namespace kv::test

#endif  // KVUTILS_TESTS_FAULTS_OPERATIONS_H_
