// What tests of UnzipFile share: the sandbox with a program named unzip.exe in it, the real one or
// a stand-in that records how it was started.
#ifndef KVUTILS_TESTS_PLATFORM_UNZIP_STAND_IN_H_
#define KVUTILS_TESTS_PLATFORM_UNZIP_STAND_IN_H_

#include <map>
#include <string>

#include "tests/platform/unzip_recorder.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/sandbox.h"

namespace kv::test {

// The record of the stand-in's last run: "command line", "program", "folder", "variable" and
// "existing folders". Empty when it has not run.
using Record = std::map<std::string, std::string>;

class UnzipSandbox : public Sandbox {
 protected:
  UnzipSandbox() { SetEnvironment(kRecordFile, RecordFile()); }

  // Puts a program at `path`.
  void PlaceStandIn(const std::string& path) { Place("unzip_recorder.exe", path); }
  void PlaceRealProgram(const std::string& path) { Place("unzip\\unzip.exe", path); }

  // The record, which is then forgotten.
  Record TakeRecord() {
    Record record;
    if (!FileExists(RecordFile())) return record;
    const std::string text = ReadBytes(RecordFile());
    RemoveFile(RecordFile());
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1) {
      const std::size_t equals = text.find('=', begin);
      record[text.substr(begin, equals - begin)] = text.substr(equals + 1, end - equals - 1);
    }
    return record;
  }

  // `text` with the root of the sandbox, which ends in "\", in place of "{root}".
  std::string InRoot(std::string text) const {
    static const std::string kMark = "{root}";
    for (std::size_t place; (place = text.find(kMark)) != std::string::npos;) {
      text.replace(place, kMark.size(), Root());
    }
    return text;
  }

 private:
  std::string RecordFile() const { return Root() + "record"; }

  static void Place(const std::string& program, const std::string& path) {
    WriteBytes(path, ReadBytes(ProgramFolder() + program));
  }
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PLATFORM_UNZIP_STAND_IN_H_
