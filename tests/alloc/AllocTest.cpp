// Fails the N-th allocation (operator new, the library's malloc and calloc), N = 1, 2, ...: each failure
// is reported or throws std::bad_alloc, no half-built result comes back, the call then succeeds.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <optional>

#include "VKTCalc.h"
#include "tests/support/GmpText.h"
#include "tests/support/TestHost.h"

static std::size_t g_countdown = 0;  // allocations until the one that fails; 0: disarmed
static bool g_failed = false;        // the armed allocation has failed
static bool FailNow() { return g_countdown != 0 && --g_countdown == 0 && (g_failed = true); }

// The link wraps malloc and calloc (tests/alloc/CMakeLists.txt): CString and CMem take theirs there.
extern "C" void *__real_malloc(std::size_t size), *__real_calloc(std::size_t n, std::size_t size);
extern "C" void* __wrap_malloc(std::size_t size) { return FailNow() ? nullptr : __real_malloc(size); }
extern "C" void* __wrap_calloc(std::size_t n, std::size_t size) {
  return FailNow() ? nullptr : __real_calloc(n, size);
}
static void* Allocate(std::size_t size, bool nothrow) {
  void* block = FailNow() ? nullptr : __real_malloc(size == 0 ? 1 : size);
  return block != nullptr || nothrow ? block : throw std::bad_alloc();
}
#define REPLACE(NEW, DELETE)                                                                        \
  void* NEW(std::size_t size) { return Allocate(size, false); }                                     \
  void* NEW(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size, true); }      \
  void DELETE(void* block) noexcept { std::free(block); }                                           \
  void DELETE(void* block, std::size_t) noexcept { std::free(block); }                              \
  void DELETE(void* block, const std::nothrow_t&) noexcept { std::free(block); }
REPLACE(operator new, operator delete)  // plain and nothrow, with their deletes; none is over-aligned
REPLACE(operator new[], operator delete[])

namespace {

// Fails call's n-th allocation; false when call, which disarms after its library work, ended before.
template <class Call>
bool FailAt(std::size_t n, Call call) {
  g_failed = false, g_countdown = n;
  try { call(); } catch (const std::bad_alloc&) {}
  g_countdown = 0;
  return g_failed;
}

// Every record found by its own name, the bodies attached (they come last).
bool Whole(CFuncMnger& m) {
  for (int i = 0; i < 87; ++i)
    if (!m.GetFuncByIndex(i) || m.FindFunc(m.GetFuncByIndex(i)->pName) != i) return false;
  return m.GetFuncByIndex(0)->pfnBody && m.GetFuncByIndex(39)->pfnBody;
}

// A failed first build of the catalogue is undone whole, so each later attempt starts afresh; any
// manager that comes back has the whole catalogue. Runs first in its process (ctest runs each case
// alone), before anything else has built the catalogue.
TEST(AllocCatalogue, AFailedFirstBuildIsUndoneAndTheNextOneIsWhole) {
  auto make = [] {
    std::unique_ptr<CFuncMnger> made(CFuncMnger::NewFuncMnger());
    g_countdown = 0;
    EXPECT_TRUE(made == nullptr || Whole(*made));  // null or whole, never half a manager
  };
  for (int n = 1; FailAt(n, make); ++n) {}
  std::unique_ptr<CFuncMnger> next(CFuncMnger::NewFuncMnger());
  EXPECT_TRUE(Whole(*next));
}

// Each case does its library work, disarms, and gives a text, or nullopt for a documented failure.
using Result = std::optional<std::u16string>;
Result Parse() {
  CErrorCollector errors;
  std::unique_ptr<ICalcTreeNode> root(
      CUtilityCalc::ParseExpression(u"sum(A1, (B1+2)*3, max(1,-2.5)) + \"a 'b'\" + C1", &errors));
  CString out;
  g_countdown = 0;
  return root != nullptr ? (root->GetExpression(out), Result(vkt::test::U(out))) : std::nullopt;
}
vkt::test::TestHost g_host;  // C1 answers with an expression, which the calculator parses again
Result Calculate() {
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));  // null when memory can't be had
  vkt::test::RunOutcome out;
  if (calc != nullptr) out = g_host.Run(*calc, u"=if(A1>1,sum(A1,B1*2),0)+hostfn(C1,'t')");
  g_countdown = 0;
  if (calc == nullptr || out.code == -1) return std::nullopt;  // -1 as when no manager can be made
  return out.value + u"|" + static_cast<char16_t>(u'0' + out.code);
}
Result Gmp(const char16_t* a, const char16_t* b) {  // b null: sqrt
  CGmp x(a), y(b);
  const int ok = b != nullptr ? x.div(&y) : x.sqrt();
  g_countdown = 0;
  return vkt::test::Text(x) + (ok ? u"" : u" failed");
}

struct Case { const char* name; Result (*call)(); const char16_t* whole; std::size_t least; };
template <std::size_t N>
void WalkEach(const Case (&cases)[N]) {
  vkt::test::ScopedFakeLanguage language;
  g_host.variables = {{u"A1", u"5"}, {u"B1", u"3"}, {u"C1", u"2+1"}}, g_host.functions = {{u"hostfn", u"4"}};
  for (const Case& c : cases) {
    const Result whole = c.call();
    EXPECT_EQ(whole, c.whole != nullptr ? Result(c.whole) : whole) << c.name;
    std::size_t n = 1;
    for (Result got; FailAt(n, [&] { got = c.call(); }); ++n, got.reset()) {
      EXPECT_TRUE(!got || got == whole) << c.name << ": allocation " << n << " failed";
      EXPECT_EQ(c.call(), whole) << c.name << ": once more after allocation " << n << " failed";
    }
    EXPECT_GT(n, c.least) << c.name << ": allocations of a whole run";
  }
}

constexpr Case kTrees[] = {{"parse", &Parse, u"sum(A1,(B1+2)*3,max(1,-2.5))+\"a \\'b\\'\"+C1", 20},
                           {"calculation", &Calculate, u"15|0", 60}};
// Leaks: the argument node of tree/Parser.cpp:332 when AddChild (:334) throws; the nodes pending in
// DestroyNodes (tree/CCalcTreeNode.cpp:32) when its push_back throws.
TEST(Alloc, ParseAndCalculationFailCleanly) { WalkEach(kTrees); }

constexpr Case kNumbers[] = {
    {"long division", [] { return Gmp(u"12345678901234567890123456789012345678901234567890.123456789",
                                       u"0.0000000000000000000000000000000000000007"); },
     u"17636684144620811271604938270017636684144620811271604938270000000000000000000000000000000", 2},
    // Not compared with the true root: Newton's 40 rounds from the value itself stop far above it.
    // The rounds run on the stack and the root's digits fit the strings' own room: nothing to fail.
    {"long root", [] { return Gmp(u"123456789012345678901234567890123456789012345678901234567890", {}); },
     nullptr, 0},
};
TEST(Alloc, LongDivisionAndSquareRootFailCleanly) { WalkEach(kNumbers); }

}  // namespace
