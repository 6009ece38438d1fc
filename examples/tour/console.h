// The console that the tour prints to.
#ifndef KVUTILS_EXAMPLES_TOUR_CONSOLE_H_
#define KVUTILS_EXAMPLES_TOUR_CONSOLE_H_

namespace tour {

// Makes the console read the output as UTF-8, leaves line ends as they are written, and collects
// the output into large pieces.
void PrepareConsole();

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_CONSOLE_H_
