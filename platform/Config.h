// platform/Config.h: every build-dependent decision of the library, in one
// place. Internal: nothing under include/ includes it.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <new>

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

namespace vkt::platform {

// Turns a failure that a lower layer reports as a result (a foundation
// buffer that could not grow answers 0) into exhausted memory, the one
// exception the library lets through: for code that must not go on with
// half a result.
[[noreturn]] inline void ThrowOutOfMemory() { throw std::bad_alloc(); }

}  // namespace vkt::platform
