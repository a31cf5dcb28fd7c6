// func/FuncString.cpp: the text built-ins.
#include "func/BuiltinTable.h"

namespace vkt::func {

std::span<const BuiltinBody> StringBodies() { return {}; }

}  // namespace vkt::func
