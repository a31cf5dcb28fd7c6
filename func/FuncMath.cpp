// func/FuncMath.cpp: the eighteen numeric built-ins and the random source of
// CUtilityCalc behind rand. Arguments arrive as text free of quotes; the
// bodies read them with the CGmp text constructor, which takes what leading
// number there is (12abc is 12, a word or a blank is nothing) and refuses
// nothing. Quoting the result and telling text from number is the wrapper's.
// A wrong number of arguments answers 0, a value the function cannot take
// -1; a failing body leaves strResult empty, so that the wrapper reports
// text 1003 or 1004 with the call text.
#include "func/BuiltinTable.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <random>
#include <vector>

#include "CFuncItem.h"
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "VKTCalcEntry.h"
#include "platform/RandomBytes.h"
#include "platform/Sync.h"

namespace vkt::func {

namespace {

// ---- Helpers shared by the bodies ------------------------------------------

// A failing body leaves no text behind: the wrapper would show any text in
// strResult as the error message, and a half-made result is none.
int Fail(CFuncPara* para, int answer) {
  para->strResult.Empty();
  return answer;
}

const char16_t* Arg(CFuncPara* para, int index) { return para->arrArgs[index].GetString(); }

// Copies the first argument into the result and normalises it there; false
// (the result emptied) when the text is too long for CGmp.
bool ArgumentToResult(CFuncPara* para) {
  para->strResult = para->arrArgs[0];
  if (para->ResetDoubleString_Result()) return true;
  para->strResult.Empty();
  return false;
}

// ---- Aggregates --------------------------------------------------------------

// The sum starts as a null number: adding zeros and blanks leaves it null,
// which writes as the empty text, while 1 + -1 is a real subtraction and
// writes 0.
CGmp SumOfArguments(CFuncPara* para, int argc) {
  CGmp total;
  for (int i = 0; i < argc; ++i) {
    CGmp value(Arg(para, i));
    total.add(&value);
  }
  return total;
}

int Sum(CFuncPara* para, int argc) {
  if (argc < 1) return 0;
  if (!para->ResetDoubleString_Para()) return -1;
  CGmp total = SumOfArguments(para, argc);
  para->SetResult(total);
  return 1;
}

// A blank counts in the divisor: average(1, '', 3) is 4 / 3.
int Average(CFuncPara* para, int argc) {
  if (argc < 1) return 0;
  if (!para->ResetDoubleString_Para()) return -1;
  CGmp total = SumOfArguments(para, argc);
  total /= argc;
  para->SetResult(total);
  return 1;
}

// The winner's own normalised text is the result, not the number written
// anew; on equal values the earliest argument stands.
int Extreme(CFuncPara* para, int argc, bool wantMax) {
  if (argc < 1) return 0;
  if (!para->ResetDoubleString_Para()) return -1;
  CGmp best(Arg(para, 0));
  int bestIndex = 0;
  for (int i = 1; i < argc; ++i) {
    CGmp candidate(Arg(para, i));
    if (wantMax ? best < candidate : best > candidate) {
      best = candidate;
      bestIndex = i;
    }
  }
  para->strResult = para->arrArgs[bestIndex];
  return 1;
}

int Max(CFuncPara* para, int argc) { return Extreme(para, argc, true); }

int Min(CFuncPara* para, int argc) { return Extreme(para, argc, false); }

int Median(CFuncPara* para, int argc) {
  if (argc < 1) return 0;
  if (!para->ResetDoubleString_Para()) return -1;
  std::vector<CGmp> values;
  values.reserve(static_cast<std::size_t>(argc));
  for (int i = 0; i < argc; ++i) values.emplace_back(Arg(para, i));
  std::vector<CGmp*> order;
  order.reserve(values.size());
  for (CGmp& value : values) order.push_back(&value);
  // Chosen: a stable sort, so that values that compare equal (a blank and a
  // zero) keep their order and the same call always gives the same text.
  if (argc > 2) {
    std::stable_sort(order.begin(), order.end(),
                     [](CGmp* a, CGmp* b) { return a->Compare(b, 0) < 0; });
  }
  CGmp middle(*order[static_cast<std::size_t>(argc / 2)]);
  if (argc % 2 == 0) {
    middle.add(order[static_cast<std::size_t>(argc / 2 - 1)]);
    middle /= 2;
  }
  para->SetResult(middle);
  return 1;
}

// ---- Shapes of one number ----------------------------------------------------

// percent(value[, decimals]): times 100, rounded, exactly that many decimals
// and a percent sign. Further arguments are ignored; no length check.
int Percent(CFuncPara* para, int argc) {
  if (argc < 1) return 0;
  int decimals = argc >= 2 ? CGmp::Str2Int(Arg(para, 1)) : 0;
  if (decimals < 0) decimals = 0;
  CGmp value(Arg(para, 0));
  value.Mul_10exp(2);
  value.Round(decimals);
  value.GetString(para->strResult, decimals, 0);
  para->strResult += u'%';
  return 1;
}

// Text only: the minus goes, the digits stay as they came (abs(-1.50) is
// 1.50), and a word passes through to be quoted by the wrapper.
int Abs(CFuncPara* para, int argc) {
  if (argc != 1) return 0;
  CString text(para->arrArgs[0]);
  text.TrimLeft();
  if (text.GetAt(0) == u'-') {
    text.Delete(0);
    text.TrimLeft();
  }
  para->strResult = text;
  return 1;
}

// floor and ceil: cut the decimals, then step down (floor, negative) or up
// (ceil, not negative) when there were any. Validate turns a -0 into 0.
int FloorOrCeil(CFuncPara* para, bool up) {
  CGmp value(para->strResult.GetString());
  value.m_strDec.TrimRight(u'0');
  if (!value.m_strDec.IsEmpty()) {
    const bool negative = value.m_bNeg != 0;
    value.m_strDec.Empty();
    value.Validate();
    if (up && !negative) value += 1;
    if (!up && negative) value -= 1;
  }
  para->SetResult(value);
  return 1;
}

int Floor(CFuncPara* para, int argc) {
  if (argc != 1) return 0;
  if (!ArgumentToResult(para)) return -1;
  return FloorOrCeil(para, false);
}

int Ceil(CFuncPara* para, int argc) {
  if (argc != 1) return 0;
  if (!ArgumentToResult(para)) return -1;
  return FloorOrCeil(para, true);
}

// floor with a shortcut: a normalised text without a point is the result as
// it stands. So int(-1.5) is -2, towards minus infinity.
int Int(CFuncPara* para, int argc) {
  if (argc != 1) return 0;
  if (!ArgumentToResult(para)) return -1;
  if (para->strResult.Find(u'.') < 0) return 1;
  return FloorOrCeil(para, false);
}

// round(value, decimals): half away from zero, and exactly that many
// decimals written, trailing zeros included (round(1.5, 2) is 1.50).
int Round(CFuncPara* para, int argc) {
  if (argc != 2) return 0;
  if (!ArgumentToResult(para)) return -1;
  const int decimals = CGmp::Str2Int(Arg(para, 1));
  if (decimals < 0) return Fail(para, -1);
  CGmp value(para->strResult.GetString());
  value.Round(decimals);
  value.GetString(para->strResult, decimals, 0);
  return 1;
}

// ---- Exact arithmetic --------------------------------------------------------

// The remainder takes the sign of the divisor; a zero divisor leaves the
// first number as it is.
int Mod(CFuncPara* para, int argc) {
  if (argc != 2) return 0;
  if (!para->ResetDoubleString_Para()) return -1;
  CGmp value(Arg(para, 0));
  CGmp divisor(Arg(para, 1));
  value.mod(divisor);
  para->SetResult(value);
  return 1;
}

int Sqrt(CFuncPara* para, int argc) {
  if (argc != 1) return 0;
  if (!ArgumentToResult(para)) return -1;
  CGmp value(para->strResult.GetString());
  if (!value.sqrt()) return Fail(para, -1);  // a negative value
  para->SetResult(value);
  return 1;
}

// ---- Through a double --------------------------------------------------------

// The double's result comes back as a CGmp of at most 15 digits. Chosen: an
// infinity or a NaN (exp of a large number, a negative base to a fractional
// power) is left to that conversion, which keeps no digits of it.
int FromDouble(CFuncPara* para, double result) {
  CGmp value(result);
  para->SetResult(value);
  return 1;
}

double ResultAsDouble(CFuncPara* para) { return CGmp::Str2Double(para->strResult.GetString(), 0); }

int Exp(CFuncPara* para, int argc) {
  if (argc != 1) return 0;
  if (!ArgumentToResult(para)) return -1;
  return FromDouble(para, std::exp(ResultAsDouble(para)));
}

int Log(CFuncPara* para, int argc) {
  if (argc != 1) return 0;
  if (!ArgumentToResult(para)) return -1;
  const double value = ResultAsDouble(para);
  if (!(value > 0.0)) return Fail(para, -1);
  return FromDouble(para, std::log(value));
}

int Log10(CFuncPara* para, int argc) {
  if (argc != 1) return 0;
  if (!ArgumentToResult(para)) return -1;
  const double value = ResultAsDouble(para);
  if (!(value > 0.0)) return Fail(para, -1);
  return FromDouble(para, std::log10(value));
}

// A negative exponent is refused (pow(2, -1) is a bad value, not 0.5); the
// base may be anything.
int Pow(CFuncPara* para, int argc) {
  if (argc != 2) return 0;
  if (!para->ResetDoubleString_Para()) return -1;
  const double base = CGmp::Str2Double(Arg(para, 0), 0);
  const double exponent = CGmp::Str2Double(Arg(para, 1), 0);
  if (exponent < 0.0) return -1;
  return FromDouble(para, std::pow(base, exponent));
}

int Rand(CFuncPara* para, int argc) {
  if (argc != 0) return 0;
  CGmp value(CUtilityCalc::C0_99(1));
  para->SetResult(value);
  return 1;
}

// In the order of the built-in table.
constexpr BuiltinBody kMathBodies[] = {
    {u"abs", &Abs},         {u"average", &Average}, {u"ceil", &Ceil},   {u"exp", &Exp},
    {u"floor", &Floor},     {u"int", &Int},         {u"log", &Log},     {u"log10", &Log10},
    {u"max", &Max},         {u"median", &Median},   {u"min", &Min},     {u"mod", &Mod},
    {u"percent", &Percent}, {u"pow", &Pow},         {u"rand", &Rand},   {u"round", &Round},
    {u"sqrt", &Sqrt},       {u"sum", &Sum},
};

}  // namespace

std::span<const BuiltinBody> MathBodies() { return kMathBodies; }

}  // namespace vkt::func

// ---- The random source -------------------------------------------------------
//
// Two pools of 20 words, each with a position that starts at -1: a secure
// pool refilled from the system's generator, and a weak pool refilled from a
// seeded generator, which also stands in when the system's generator fails.

namespace {

constexpr int kPoolWords = 20;

// Chosen: the weak pool draws from a generator of its own rather than the C
// library's rand, so that a host's srand and ours do not disturb each
// other. Each draw gives the high 16 bits of a Mersenne twister.
struct RandomPools {
  CCritSec lock;                  // guards everything below
  UINT secure[kPoolWords] = {};
  int securePos = -1;             // next word; outside 0..19: refill first
  UINT weak[kPoolWords] = {};
  int weakPos = -1;               // next word; -1 seeds from the clock, 20 from the pool
  std::mt19937 generator;
};

// Chosen: a function-local static, made at the first draw and gone at exit;
// the pools are no part of the library's load order.
RandomPools& Pools() {
  static RandomPools pools;
  return pools;
}

UINT Draw16(RandomPools& pools) { return static_cast<UINT>(pools.generator() >> 16) & 0xFFFFu; }

// The next weak word; the caller holds the lock.
UINT NextWeakWord(RandomPools& pools) {
  if (pools.weakPos < 0 || pools.weakPos >= kPoolWords) {
    std::uint32_t seed = 0;
    if (pools.weakPos < 0) {
      seed = static_cast<std::uint32_t>(static_cast<std::uint64_t>(std::time(nullptr)) +
                                        GetTickTime());
    } else {
      seed = pools.weak[0] + pools.weak[4] + pools.weak[5] + pools.weak[8];
    }
    pools.generator.seed(seed);
    for (UINT& word : pools.weak) {
      const UINT r1 = Draw16(pools);
      const UINT r2 = Draw16(pools);
      word = (r1 << 16) ^ (r2 & 0xFFFFu);
    }
    pools.weakPos = 0;
  }
  return pools.weak[pools.weakPos++];
}

// The next secure word, or false when the pool is spent and the system's
// generator fails; the caller holds the lock.
bool NextSecureWord(RandomPools& pools, UINT& word) {
  if (pools.securePos < 0 || pools.securePos >= kPoolWords) {
    if (!vkt::platform::FillRandomBytes(pools.secure, sizeof pools.secure)) return false;
    pools.securePos = 0;
  }
  word = pools.secure[pools.securePos++];
  return true;
}

UINT NonNegative(UINT word) { return (word & 0x80000000u) != 0 ? 0u - word : word; }

}  // namespace

UINT CUtilityCalc::GetUIntRand(int bWeak) {
  RandomPools& pools = Pools();
  CCritSecGuard guard(pools.lock);
  UINT word = 0;
  if (bWeak != 0 || !NextSecureWord(pools, word)) word = NextWeakWord(pools);
  return NonNegative(word);
}

int CUtilityCalc::C0_99(int bWeak) { return static_cast<int>(GetUIntRand(bWeak) % 100u); }

void CUtilityCalc::GenRandalphabetDigitString(CString& out, int count) {
  static constexpr char16_t kSymbols[] = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  RandomPools& pools = Pools();
  for (int i = 0; i < count; ++i) {
    UINT symbol = 0;
    do {
      CCritSecGuard guard(pools.lock);  // held for one draw
      symbol = NonNegative(NextWeakWord(pools)) % 36u;
    } while (i == 0 && symbol < 10);  // the first character is a letter
    out += kSymbols[symbol];
  }
}
