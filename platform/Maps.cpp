// platform/Maps.cpp: the named maps' destructors. Defining them here gives
// each class one virtual table and one type identity, exported from the
// library, instead of a copy in every host; all else is in the template.
#include "platform/Maps.h"

CMapStringToOb::~CMapStringToOb() = default;
CMapStringToString::~CMapStringToString() = default;
CMapStringToPtr::~CMapStringToPtr() = default;
