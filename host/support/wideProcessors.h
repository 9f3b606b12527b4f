// Loops for processors that take more numbers at once than all have to.
#pragma once

/// A function that is compiled three times, for processors that take two, four or eight doubles at
/// once; the program picks one when it starts. None joins products and sums, so all give the same
/// digits.
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__) && defined(__GLIBC__) &&       \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define HOST_ALSO_FOR_WIDE_PROCESSORS                                                              \
    __attribute__((target_clones("arch=x86-64-v4", "avx2", "default")))
#else
#define HOST_ALSO_FOR_WIDE_PROCESSORS
#endif
