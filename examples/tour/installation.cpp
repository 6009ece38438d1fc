#include "examples/tour/installation.h"

#include "utils/files/files.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

#include <charconv>
#include <utility>

namespace tour {
namespace {

// The significant lines of a data file, without the white space at their ends.
std::vector<std::string> ReadLines(const char* dataName) {
  KelvarisPath resolver;
  const char* const path = resolver.GetPath(dataName);
  MTextFile file(true);
  std::vector<std::string> lines;
  if (path == nullptr || !file.Open(path, false)) return lines;
  char line[1024];
  while (file.Readln(line, sizeof line) >= 0) lines.emplace_back(line);
  return lines;
}

// The columns of a line, with a tab between them.
std::vector<std::string> Columns(const std::string& line) {
  std::vector<std::string> columns;
  GetTokens(columns, line, '\t');
  return columns;
}

bool ReadNumber(const std::string& text, unsigned& number) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end;
}

}  // namespace

std::vector<std::vector<std::string>> ReadRows(const char* dataName) {
  std::vector<std::vector<std::string>> rows;
  for (const std::string& line : ReadLines(dataName)) {
    std::vector<std::string> columns = Columns(line);
    if (!columns.empty()) rows.push_back(std::move(columns));
  }
  return rows;
}

std::vector<ObjectName> ReadObjectNames() {
  std::vector<ObjectName> names;
  for (const std::vector<std::string>& columns : ReadRows(kNamesName)) {
    ObjectName name;
    if (columns.size() < 2 || !ReadNumber(columns[0], name.number)) continue;
    name.name = columns[1];
    if (columns.size() > 2) name.description = columns[2];
    names.push_back(name);
  }
  return names;
}

std::vector<Discovery> ReadDiscoveries() {
  std::vector<Discovery> discoveries;
  for (const std::vector<std::string>& columns : ReadRows(kDiscoveriesName)) {
    unsigned number = 0;
    if (columns.size() < 3 || !ReadNumber(columns[0], number)) continue;
    discoveries.push_back({number, columns[1], columns[2]});
  }
  return discoveries;
}

Observer ReadObserver() {
  const std::vector<std::string> lines = ReadLines(kObserverName);
  Observer observer;
  if (!lines.empty()) observer.place = lines[0];
  if (lines.size() > 1) observer.zone = lines[1];
  return observer;
}

}  // namespace tour
