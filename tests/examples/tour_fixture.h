// The tour run as a program of its own, or section by section, on a copy of the sample installation
// in the sandbox.
#ifndef KVUTILS_TESTS_EXAMPLES_TOUR_FIXTURE_H_
#define KVUTILS_TESTS_EXAMPLES_TOUR_FIXTURE_H_

#include <string>
#include <vector>

#include "tests/support/process.h"
#include "tests/support/sandbox.h"

namespace kv::test {

// Copies the sample installation, complete with its records, into a folder that ends in "\".
inline void LayOutInstallation(const std::string& folder) {
  const std::string installation = ProgramFolder() + "..\\tour\\install\\";
  for (const std::string& entry : ListTree(installation)) {
    if (entry.back() != '\\') WriteBytes(folder + entry, ReadBytes(installation + entry));
  }
}

// The half with the dwarf planets; the other one takes the clipboard, which all programs share.
inline ProcessResult RunTour(std::vector<std::string> arguments, const std::string& folder) {
  arguments.insert(arguments.begin(), {"--only", "places"});
  return RunProgram(ProgramFolder() + "tour.exe", arguments, folder);
}

// Makes a folder, which ends in "\", the one for temporary files, here and in programs that are
// run.
inline void UseTemporary(const std::string& folder) {
  CreateFolders(folder);
  SetEnvironment("TMP", folder);
}

inline bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// The records, below the installation and below the writable folder.
inline constexpr char kRecords[] = "catalogs\\Planets&Moons\\DwarfPlanets.bin";

class Tour : public Sandbox {
 protected:
  Tour() { LayOutInstallation(Work()); }

  ProcessResult Run(const std::vector<std::string>& arguments) const {
    return RunTour(arguments, Work());
  }
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_EXAMPLES_TOUR_FIXTURE_H_
