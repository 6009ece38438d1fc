#ifndef KVUTILS_UTILS_EXPORT_H_
#define KVUTILS_UTILS_EXPORT_H_

// KVUTILS_API marks what kvutils.dll exports. KVUTILS_BUILD is defined while the DLL itself is
// built.
#if defined(KVUTILS_BUILD)
#define KVUTILS_API __declspec(dllexport)
#else
#define KVUTILS_API __declspec(dllimport)
#endif

#endif  // KVUTILS_UTILS_EXPORT_H_
