/* What a program made by another compiler needs of the library: its undecorated functions. Built without
   any run-time library, as the compiler that speaks Microsoft's ABI makes it. */
__declspec(dllimport) double getLocalUTCDeltaForTimezone(const char* zoneName, double julianDate);
__declspec(dllimport) int get24HoursKvTimeFormat(void);
__declspec(dllimport) void set24HoursKvTimeFormat(int value);
__declspec(dllimport) void ExitProcess(unsigned code);

int _fltused = 0; /* the linker's question whether floating point is used */

/* The hours of Berlin's summer time, and the clock that was set: exit code 27. */
void start(void) {
  double hours = getLocalUTCDeltaForTimezone("Europe/Berlin", 2459762.5) * 24;
  set24HoursKvTimeFormat(7);
  ExitProcess((unsigned)(hours * 10 + 0.5) + (unsigned)get24HoursKvTimeFormat());
}
