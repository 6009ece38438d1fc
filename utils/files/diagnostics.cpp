#include "utils/files/files.h"

void WriteLogFile(const char* /*text*/) {}

void CloseLogFile() {}

void PrintDebugString(const char* /*format*/, ...) {}

int Handle_program_memory_depletion(unsigned long long /*size*/) { return -1; }
