// Notes of a night, sorted, dated and checked: a little of each subsystem.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "utils/astro/astro.h"
#include "utils/download/download.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"
#include "utils/platform/platform.h"
#include "utils/text/text.h"

namespace {

void ShowTargets() {
  std::vector<std::string> targets;
  GetTokens(targets, "M 101;M 31;NGC 7000;M 4", ';');
  std::sort(targets.begin(), targets.end(), [](const std::string& a, const std::string& b) {
    return CompareStringWithNumber(a.c_str(), b.c_str()) < 0;
  });
  std::printf("targets:");
  for (const std::string& target : targets) std::printf(" %s", target.c_str());
  std::printf("\n");
}

void ShowDate() {
  short year = 0;
  short month = 0;
  double day = 0;
  UnpackDate(&year, &month, &day, "K194R25");
  std::printf("K194R25 is %d-%02d-%05.2f\n", year, month, day);
}

void ShowOffset() {
  const double summer = 2459762.5;  // 2 July 2022
  const double hours = getLocalUTCDeltaForTimezone("Europe/Berlin", summer) * 24;
  std::printf("summer in Berlin is UTC%+.0f\n", hours);
  getLocalUTCDeltaForTimezone(nullptr, 0.0);
}

void ShowNote() {
  KelvarisPath resolver;
  MTextFile note(true);
  note.Open("note.txt", true);
  note.Writeln("! seeing 2/5");
  note.Writeln("Saturn: rings at 3°");
  note.Close();
  note.Open("note.txt", false);
  char line[64];
  const int length = note.Readln(line, sizeof line);
  note.Close();
  std::printf("%s (CRC-32 %08X)\n", line, crc32().Get(line, length));
  MFile::DeleteFileA("note.txt");
  KelvarisPath::Done();
}

// The exception is thrown inside the DLL and caught here, and printed by both.
void ShowFailure() {
  try {
    MFile missing("no such file", 2);
  } catch (const MException& exception) {
    std::printf("caught, code %u: %s", exception.GetCode(), exception.GetMessage());
  }
}

}  // namespace

int main() {
  std::printf("kvutils %s\n", GetVersionString());
  ShowTargets();
  ShowDate();
  ShowOffset();
  ShowNote();
  ShowFailure();
  return 0;
}
