// tools/Terminal.h: the one thing the tool asks of the terminal: whether a
// person is typing. The tool is a host, not the library, so this is the only
// place outside platform/ that includes an OS header.
#pragma once

namespace vkt::tool {

// True when standard input is a terminal: the tool then runs interactively.
bool StandardInputIsTerminal();

}  // namespace vkt::tool
