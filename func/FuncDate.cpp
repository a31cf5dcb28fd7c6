// func/FuncDate.cpp: the date built-ins.
#include "func/BuiltinTable.h"

namespace vkt::func {

std::span<const BuiltinBody> DateBodies() { return {}; }

}  // namespace vkt::func
