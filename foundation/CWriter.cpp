// foundation/CWriter.cpp: the writer interface has no state; this unit only
// anchors its virtual table in the library.
#include "foundation/CWriter.h"

CWriter::~CWriter() = default;
