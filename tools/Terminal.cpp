// tools/Terminal.cpp: the terminal test behind Terminal.h. It includes the
// POSIX header that knows terminals; nothing else in the tool does.
#include "tools/Terminal.h"

#include <unistd.h>

namespace vkt::tool {

bool StandardInputIsTerminal() { return isatty(STDIN_FILENO) != 0; }

}  // namespace vkt::tool
