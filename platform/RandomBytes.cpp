// platform/RandomBytes.cpp: the door to the system's secure random generator.
// Bytes are gathered into a scratch block first and copied out only when all
// of them came, so a failure never leaves a half-filled buffer behind.
#include "platform/RandomBytes.h"

#include <cerrno>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

namespace vkt::platform {
namespace {

// getrandom in a loop: it may return fewer bytes than asked for large
// requests, or be interrupted by a signal.
bool FromGetrandom(unsigned char* out, std::size_t n) {
  std::size_t done = 0;
  while (done < n) {
    const ssize_t got = getrandom(out + done, n - done, 0);
    if (got < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    done += static_cast<std::size_t>(got);
  }
  return true;
}

bool FromDevice(unsigned char* out, std::size_t n) {
  int fd;
  do {
    fd = open("/dev/urandom", O_RDONLY | O_CLOEXEC);
  } while (fd < 0 && errno == EINTR);
  if (fd < 0) return false;
  std::size_t done = 0;
  bool ok = true;
  while (done < n) {
    const ssize_t got = read(fd, out + done, n - done);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) {
      ok = false;
      break;
    }
    done += static_cast<std::size_t>(got);
  }
  close(fd);
  return ok;
}

}  // namespace

bool FillRandomBytes(void* buffer, std::size_t n) {
  if (n == 0) return true;
  if (buffer == nullptr) return false;
  std::vector<unsigned char> scratch(n);
  if (!FromGetrandom(scratch.data(), n) && !FromDevice(scratch.data(), n)) return false;
  std::memcpy(buffer, scratch.data(), n);
  explicit_bzero(scratch.data(), n);  // no copy of a secret left in freed memory
  return true;
}

}  // namespace vkt::platform
