// platform/CObject.cpp: the one out-of-line member of CObject, so that its
// virtual table and type information live in the library and are shared by
// every host that derives from it.
#include "platform/CObject.h"

CObject::~CObject() = default;
