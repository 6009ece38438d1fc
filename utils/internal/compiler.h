// What the compiler adds to the language, for the sources that use one processor's instructions.
#ifndef KVUTILS_UTILS_INTERNAL_COMPILER_H_
#define KVUTILS_UTILS_INTERNAL_COMPILER_H_

// KVUTILS_TARGET("avx2,bmi"): the function may use these instructions. Its callers ask the
// processor first. A lambda does not inherit the attribute of the function that it stands in.
// KVUTILS_READS_WHOLE_BLOCKS: the function reads whole blocks of which an object may hold only a
// part, all in one page with it; checkers of memory pass over it. KVUTILS_INLINE: a step of a loop,
// whose arguments stay in registers where it is copied into the loop.
// KVUTILS_PROCESSOR_HAS("avx2"): whether the processor has them and the system saves their
// registers. A compiler without the question leaves the instructions of every x86-64 processor.
#if defined(__GNUC__)
#define KVUTILS_TARGET(features) __attribute__((target(features)))
#define KVUTILS_READS_WHOLE_BLOCKS __attribute__((no_sanitize("address")))
#define KVUTILS_PROCESSOR_HAS(feature) (__builtin_cpu_supports(feature) != 0)
#define KVUTILS_INLINE inline __attribute__((always_inline))
#else
#define KVUTILS_TARGET(features)
#define KVUTILS_READS_WHOLE_BLOCKS
#define KVUTILS_PROCESSOR_HAS(feature) false
#define KVUTILS_INLINE inline
#endif

#endif  // KVUTILS_UTILS_INTERNAL_COMPILER_H_
