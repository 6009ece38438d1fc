#include "examples/tour/section.h"

#include "examples/tour/installation.h"

namespace tour {

std::vector<Row> RequireRows(const char* dataName) {
  std::vector<Row> rows = ReadRows(dataName);
  if (rows.empty()) throw Failure(std::string(dataName) + " is missing or empty");
  return rows;
}

std::string ColumnOf(const Row& row, std::size_t column) {
  return column < row.size() ? row[column] : std::string();
}

}  // namespace tour
