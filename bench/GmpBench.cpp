// bench/GmpBench.cpp: CGmp against GMP (mpz on integers scaled by a power
// of ten) on the same operands of 10, 18, 40 and 60 digits: text in and out,
// add, compare, mul, div, sqrt and Round. One templated body runs both sides;
// before timing, each benchmark checks once that both sides print the same
// result (GMP's exact result cut at CGmp's limits). After the run a table
// gives ns per operation for both and the ratio CGmp/GMP.
//
// Each side works the way its interface is used: CGmp copies the left
// operand and changes the copy in place; GMP writes into a result it keeps.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "CGmp.h"

#if VKTCALC_HAVE_GMP
#include <gmp.h>
#endif

namespace {

enum Op { kText, kAdd, kCompare, kMul, kDiv, kSqrt, kRound };
const char* const kOpNames[] = {"SetString+GetString", "add", "Compare", "mul", "div", "sqrt", "Round(2)"};
constexpr int kRoundTo = 2;   // decimals of Round
constexpr int kDivDecimals = 40;  // CGmp's decimal limit, where div and sqrt cut

// Two operands of `digits` significant digits, a third of them decimals
// (at most 20), fixed seed. The left one starts with 10, so that no partial
// product of mul passes the limits and both sides compute the same product;
// its third decimal is 7, so that Round(2) rounds up. The root is taken of
// a value with a third of the digits before the point, where Newton's
// iteration ends within its 40 rounds.
struct Operands {
  std::string a, b, root;
  int scale;  // decimals of a and b
};

std::string Digits(std::mt19937& random, int n) {
  std::string s;
  for (int i = 0; i < n; ++i) s += static_cast<char>('0' + random() % 10);
  return s;
}

std::string WithPoint(std::string digits, int scale) {
  if (digits.back() == '0') digits.back() = '3';
  if (scale == 0) return digits;
  const std::size_t point = digits.size() - static_cast<std::size_t>(scale);
  return digits.substr(0, point) + "." + digits.substr(point);
}

Operands MakeOperands(int digits) {
  std::mt19937 random(static_cast<unsigned>(digits) * 7919u);
  Operands o;
  o.scale = std::min(20, digits / 3);
  std::string a = "10" + Digits(random, digits - 2);
  a[a.size() - static_cast<std::size_t>(o.scale) + kRoundTo] = '7';
  o.a = WithPoint(a, o.scale);
  std::string b = Digits(random, digits);
  b[0] = static_cast<char>('1' + random() % 9);
  o.b = WithPoint(b, o.scale);
  std::string r = Digits(random, digits);
  r[0] = static_cast<char>('1' + random() % 9);
  o.root = WithPoint(r, std::min(40, digits - digits / 3));
  return o;
}

std::u16string Wide(const std::string& s) { return std::u16string(s.begin(), s.end()); }

std::string Narrow(const CString& s) { return s.ToUtf8(); }

// The text CGmp prints for a value whose fields are `whole` and `dec`:
// Validate's cuts applied, so that an exact result compares with CGmp's.
std::string CutLikeCGmp(const std::string& text) {
  const bool negative = !text.empty() && text[0] == '-';
  const std::string body = negative ? text.substr(1) : text;
  const std::size_t point = body.find('.');
  CGmp x;
  x.m_strInt = CString(body.substr(0, point).c_str());
  if (point != std::string::npos) x.m_strDec = CString(body.substr(point + 1).c_str());
  x.m_bNeg = negative ? 1 : 0;
  x.Validate();
  CString out;
  x.GetString(out, -1, 0);
  return Narrow(out);
}

struct CGmpSide {
  static constexpr const char* kName = "CGmp";

  explicit CGmpSide(const Operands& o)
      : textA(Wide(o.a)), a(textA.c_str()), b(Wide(o.b).c_str()), root(Wide(o.root).c_str()) {}

  template <Op op>
  void Run() {
    if constexpr (op == kText) {
      r.SetString(textA.c_str(), CGmp::CheckStrict_Full);
      r.GetString(out, -1, 0);
      benchmark::DoNotOptimize(out);
    } else if constexpr (op == kCompare) {
      benchmark::DoNotOptimize(a.Compare(&b, 0));
    } else {
      r = op == kSqrt ? root : a;
      if constexpr (op == kAdd) r.add(&b);
      if constexpr (op == kMul) r.mul(&b);
      if constexpr (op == kDiv) r.div(&b);
      if constexpr (op == kSqrt) r.sqrt();
      if constexpr (op == kRound) r.Round(kRoundTo);
      benchmark::DoNotOptimize(r);
    }
  }

  template <Op op>
  std::string Result() {
    Run<op>();
    if constexpr (op == kText) return Narrow(out);
    if constexpr (op == kCompare) return std::to_string(a.Compare(&b, 0));
    CString text;
    r.GetString(text, -1, 0);
    return Narrow(text);
  }

  std::u16string textA;
  CGmp a, b, root, r;
  CString out;
};

#if VKTCALC_HAVE_GMP
// An mpz that frees itself.
struct Z {
  Z() { mpz_init(v); }
  ~Z() { mpz_clear(v); }
  Z(const Z&) = delete;
  Z& operator=(const Z&) = delete;
  mpz_t v;
};

struct GmpSide {
  static constexpr const char* kName = "GMP";

  explicit GmpSide(const Operands& o) : textA(o.a), scale(o.scale), rootScale(0) {
    SetScaled(a.v, o.a, nullptr);
    SetScaled(b.v, o.b, nullptr);
    SetScaled(root.v, o.root, &rootScale);
    mpz_ui_pow_ui(pow40.v, 10, kDivDecimals);
    // The root of x to 40 decimals is that of x * 10^80 as an integer.
    mpz_ui_pow_ui(rootShift.v, 10, static_cast<unsigned long>(2 * kDivDecimals - rootScale));
    mpz_ui_pow_ui(roundDivisor.v, 10, static_cast<unsigned long>(scale - kRoundTo));
    mpz_ui_pow_ui(roundHalf.v, 10, static_cast<unsigned long>(scale - kRoundTo - 1));
    mpz_mul_ui(roundHalf.v, roundHalf.v, 5);
    buffer.resize(200);
  }

  static void SetScaled(mpz_t z, const std::string& text, int* scaleOut) {
    std::string digits;
    int decimals = 0;
    bool point = false;
    for (char c : text) {
      if (c == '.') {
        point = true;
      } else {
        digits += c;
        if (point) ++decimals;
      }
    }
    mpz_set_str(z, digits.c_str(), 10);
    if (scaleOut) *scaleOut = decimals;
  }

  template <Op op>
  void Run() {
    if constexpr (op == kText) {
      // The same work as the text side: drop the point, read, print, put the
      // point back and strip trailing zeros.
      char in[128];
      std::size_t n = 0;
      std::size_t point = 0;
      for (char c : textA) {
        if (c == '.') {
          point = n;
        } else {
          in[n++] = c;
        }
      }
      in[n] = 0;
      mpz_set_str(r.v, in, 10);
      mpz_get_str(buffer.data() + 1, 10, r.v);
      std::size_t length = std::strlen(buffer.data() + 1);
      if (point != 0) {
        std::memmove(buffer.data(), buffer.data() + 1, point);
        buffer[point] = '.';
        while (buffer[length] == '0') --length;
      }
      benchmark::DoNotOptimize(buffer.data());
      benchmark::DoNotOptimize(length);
    } else if constexpr (op == kAdd) {
      mpz_add(r.v, a.v, b.v);
    } else if constexpr (op == kCompare) {
      benchmark::DoNotOptimize(mpz_cmp(a.v, b.v));
    } else if constexpr (op == kMul) {
      mpz_mul(r.v, a.v, b.v);
    } else if constexpr (op == kDiv) {
      mpz_mul(t.v, a.v, pow40.v);
      mpz_tdiv_q(r.v, t.v, b.v);
    } else if constexpr (op == kSqrt) {
      mpz_mul(t.v, root.v, rootShift.v);
      mpz_sqrt(r.v, t.v);
    } else if constexpr (op == kRound) {
      mpz_add(t.v, a.v, roundHalf.v);  // a is positive
      mpz_tdiv_q(r.v, t.v, roundDivisor.v);
    }
    benchmark::ClobberMemory();
  }

  // r as decimal text with `decimals` places.
  std::string Scaled(int decimals) {
    char* s = mpz_get_str(nullptr, 10, r.v);
    std::string digits(s);
    void (*freeFn)(void*, size_t);
    mp_get_memory_functions(nullptr, nullptr, &freeFn);
    freeFn(s, digits.size() + 1);
    const bool negative = digits[0] == '-';
    if (negative) digits.erase(0, 1);
    if (static_cast<int>(digits.size()) <= decimals)
      digits = std::string(static_cast<std::size_t>(decimals + 1) - digits.size(), '0') + digits;
    if (decimals > 0) {
      const std::size_t point = digits.size() - static_cast<std::size_t>(decimals);
      digits = digits.substr(0, point) + "." + digits.substr(point);
    }
    return CutLikeCGmp((negative ? "-" : "") + digits);
  }

  template <Op op>
  std::string Result() {
    Run<op>();
    if constexpr (op == kText) return CutLikeCGmp(textA);
    if constexpr (op == kCompare) {
      const int c = mpz_cmp(a.v, b.v);
      return std::to_string(c < 0 ? -1 : (c > 0 ? 1 : 0));
    }
    if constexpr (op == kAdd) return Scaled(scale);
    if constexpr (op == kMul) return Scaled(2 * scale);
    if constexpr (op == kDiv || op == kSqrt) return Scaled(kDivDecimals);
    return Scaled(kRoundTo);
  }

  std::string textA;
  int scale;
  int rootScale;
  Z a, b, root, r, t, pow40, rootShift, roundDivisor, roundHalf;
  std::vector<char> buffer;
};
#endif

template <Op op, class Side>
void BM_Gmp(benchmark::State& state) {
  const Operands operands = MakeOperands(static_cast<int>(state.range(0)));
  Side side(operands);
#if VKTCALC_HAVE_GMP
  {
    // Both sides must agree before their times mean anything.
    CGmpSide mine(operands);
    GmpSide peer(operands);
    const std::string ours = mine.template Result<op>();
    const std::string theirs = peer.template Result<op>();
    if (ours != theirs) {
      state.SkipWithError(("results differ: CGmp " + ours + ", GMP " + theirs).c_str());
      return;
    }
  }
#endif
  for (auto _ : state) side.template Run<op>();
  state.SetItemsProcessed(state.iterations());
}

#define VKTCALC_GMP_BENCH(op, side) \
  BENCHMARK_TEMPLATE(BM_Gmp, op, side)->Arg(10)->Arg(18)->Arg(40)->Arg(60)

#if VKTCALC_HAVE_GMP
#define VKTCALC_GMP_BENCH_BOTH(op) \
  VKTCALC_GMP_BENCH(op, CGmpSide);  \
  VKTCALC_GMP_BENCH(op, GmpSide)
#else
#define VKTCALC_GMP_BENCH_BOTH(op) VKTCALC_GMP_BENCH(op, CGmpSide)
#endif

VKTCALC_GMP_BENCH_BOTH(kText);
VKTCALC_GMP_BENCH_BOTH(kAdd);
VKTCALC_GMP_BENCH_BOTH(kCompare);
VKTCALC_GMP_BENCH_BOTH(kMul);
VKTCALC_GMP_BENCH_BOTH(kDiv);
VKTCALC_GMP_BENCH_BOTH(kSqrt);
VKTCALC_GMP_BENCH_BOTH(kRound);

// Keeps the CPU time per iteration of every benchmark, the least over its
// repetitions (--benchmark_repetitions), for the ratio table: on a shared
// machine the least is the one least disturbed.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const std::string name = run.run_name.str();
      const double ns = run.GetAdjustedCPUTime();
      auto known = times.find(name);
      if (known == times.end() || ns < known->second) times[name] = ns;
    }
    ConsoleReporter::ReportRuns(runs);
  }
  std::map<std::string, double> times;
};

void PrintRatios(const RatioReporter& reporter) {
  static const char* const kOpTemplate[] = {"kText", "kAdd", "kCompare", "kMul", "kDiv", "kSqrt", "kRound"};
  std::printf("\n%-20s %6s %12s %12s %8s\n", "operation", "digits", "CGmp ns", "GMP ns", "ratio");
  for (int op = 0; op < 7; ++op) {
    for (int digits : {10, 18, 40, 60}) {
      const std::string suffix = ">/" + std::to_string(digits);
      const std::string base = std::string("BM_Gmp<") + kOpTemplate[op] + ", ";
      auto ours = reporter.times.find(base + "CGmpSide" + suffix);
      auto theirs = reporter.times.find(base + "GmpSide" + suffix);
      if (ours == reporter.times.end()) continue;
      if (theirs == reporter.times.end()) {
        std::printf("%-20s %6d %12.1f %12s %8s\n", kOpNames[op], digits, ours->second, "-", "-");
      } else {
        std::printf("%-20s %6d %12.1f %12.1f %8.1f\n", kOpNames[op], digits, ours->second, theirs->second,
                    ours->second / theirs->second);
      }
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  PrintRatios(reporter);
  return 0;
}
