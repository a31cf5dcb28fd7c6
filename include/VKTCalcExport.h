// VKTCalcExport.h: the one export macro of the library.
//
// The library is built with hidden visibility; what hosts may call carries
// VKTCALC_API. Hosts see the same attribute, which is harmless on their side.
#pragma once

#if defined(__GNUC__) || defined(__clang__)
#define VKTCALC_API __attribute__((visibility("default")))
#else
#define VKTCALC_API
#endif
