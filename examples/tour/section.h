// What the sections of the second half share: each makes its text, or fails with one line.
#ifndef KVUTILS_EXAMPLES_TOUR_SECTION_H_
#define KVUTILS_EXAMPLES_TOUR_SECTION_H_

#include <stdexcept>
#include <string>
#include <vector>

namespace tour {

// Why a section cannot be shown, on one line without a full stop.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

using Row = std::vector<std::string>;  // the columns of a line, one at least

// The rows of a data file. Throws Failure when there are none.
std::vector<Row> RequireRows(const char* dataName);

// The column of a row; empty when the row is shorter.
std::string ColumnOf(const Row& row, std::size_t column);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_SECTION_H_
