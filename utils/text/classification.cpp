#include "utils/text/text.h"

#include "utils/internal/win32.h"

bool IsAlphaDigital(wchar_t c) { return ::IsCharAlphaNumericW(c) != FALSE; }
