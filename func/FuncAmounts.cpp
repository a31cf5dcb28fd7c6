// func/FuncAmounts.cpp: amounts and dates in words.
#include "func/BuiltinTable.h"

namespace vkt::func {

std::span<const BuiltinBody> AmountBodies() { return {}; }

}  // namespace vkt::func
