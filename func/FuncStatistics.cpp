// func/FuncStatistics.cpp: the variance functions and sumdim.
#include "func/BuiltinTable.h"

namespace vkt::func {

std::span<const BuiltinBody> StatisticsBodies() { return {}; }

}  // namespace vkt::func
