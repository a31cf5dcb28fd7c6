// platform/Arrays.cpp: the named arrays' destructors. Defining them here
// gives each class one virtual table and one type identity, exported from
// the library, instead of a copy in every host; all else is in the template.
#include "platform/Arrays.h"

CStringArray::~CStringArray() = default;
CUIntArray::~CUIntArray() = default;
CByteArray::~CByteArray() = default;
CWordArray::~CWordArray() = default;
CDWordArray::~CDWordArray() = default;
CPtrArray::~CPtrArray() = default;
CObArray::~CObArray() = default;
