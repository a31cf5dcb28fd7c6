// platform/Config.h: every build-dependent decision of the library, in one
// place. Internal: nothing under include/ includes it.
#pragma once

#include <cstdio>
#include <cstdlib>

// VKTCALC_ASSERT checks our own invariants. It aborts in debug and sanitizer
// builds (NDEBUG unset); in release the code after it still takes a safe path.
#ifndef NDEBUG
#define VKTCALC_ASSERT(cond)                                                  \
  do {                                                                        \
    if (!(cond)) {                                                            \
      std::fprintf(stderr, "%s:%d: assertion failed: %s\n", __FILE__,         \
                   __LINE__, #cond);                                          \
      std::abort();                                                           \
    }                                                                         \
  } while (0)
#else
#define VKTCALC_ASSERT(cond) ((void)0)
#endif
