#include "examples/tour/name_order.h"

#include "examples/tour/format_text.h"
#include "examples/tour/installation.h"
#include "examples/tour/section.h"
#include "utils/text/text.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace tour {
namespace {

struct Order {
  const char* name;
  int (*compare)(const char* a, const char* b);
};

std::vector<Row> Sorted(std::vector<Row> rows, const Order& order) {
  std::stable_sort(rows.begin(), rows.end(), [&](const Row& a, const Row& b) {
    return order.compare(a[0].c_str(), b[0].c_str()) < 0;
  });
  return rows;
}

// A line without the blanks that fill up its last cell.
std::string Line(std::string cells) { return cells.erase(cells.find_last_not_of(' ') + 1) + "\n"; }

// The names of a data file side by side, in each of the orders; behind the last, their second
// column.
std::string ColumnsText(const char* dataName, const std::vector<Order>& orders) {
  constexpr std::size_t kWidth = 30;
  const std::vector<Row> rows = RequireRows(dataName);
  std::vector<std::vector<Row>> columns;
  std::string heads = "  ";
  for (const Order& order : orders) {
    columns.push_back(Sorted(rows, order));
    heads += Padded(order.name, kWidth);
  }
  std::string text = Line(heads);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::string cells = "  ";
    for (const std::vector<Row>& column : columns) cells += Padded(column[i][0], kWidth);
    text += Line(cells + ColumnOf(columns.back()[i], 1));
  }
  return text;
}

}  // namespace

std::string NameOrderText() {
  return ColumnsText(kDeepSkyName, {{"strcmp", std::strcmp},
                                    {"CompareStringWithNumber", CompareStringWithNumber}}) +
         "\n" +
         ColumnsText(kMinorPlanetsName,
                     {{"strcmp", std::strcmp},
                      {"SortAsterNameWithNumber", SortAsterNameWithNumber},
                      {"CompareAsterNameWithNumber", CompareAsterNameWithNumber}}) +
         "  The one goes by the number alone, the other by the text without its parentheses.\n";
}

}  // namespace tour
