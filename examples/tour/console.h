// The console that the tour is started from and prints to.
#ifndef KVUTILS_EXAMPLES_TOUR_CONSOLE_H_
#define KVUTILS_EXAMPLES_TOUR_CONSOLE_H_

#include <string>
#include <vector>

namespace tour {

// Makes the console read the output as UTF-8, leaves line ends as they are written, and collects
// the output into large pieces.
void PrepareConsole();

// The arguments behind the program's name, in UTF-8. Those of main() are in the system's code page,
// which cannot hold every text, and have "*" and "?" replaced by the files of the current folder.
std::vector<std::string> CommandLineArguments();

// A title of the page, after an empty line and underlined.
void PrintTitle(const std::string& title);

// One line for the error output, behind all that has been printed.
void Complain(const std::string& complaint);

// Hands what has been printed over to the system; false when some of it could not be written.
bool FlushOutput();

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_CONSOLE_H_
