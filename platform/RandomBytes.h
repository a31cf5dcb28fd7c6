// platform/RandomBytes.h: secure random bytes for the random built-ins.
// Internal: nothing under include/ includes it.
#pragma once

#include <cstddef>

namespace vkt::platform {

// Fills n bytes from the system's secure generator: getrandom(2), or
// /dev/urandom where that call is missing. False, with the buffer untouched,
// when neither gives all n bytes. n of 0 is true; a null buffer with n above
// 0 is false.
bool FillRandomBytes(void* buffer, std::size_t n);

}  // namespace vkt::platform
