// bench/TextBench.cpp: text services per call. like matching through the
// process-wide pattern cache on one and two threads, beside std::regex
// compiled once with the same meaning; number pictures; percent escapes both
// ways on a short mixed text.
#include <benchmark/benchmark.h>

#include <iterator>
#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "VKTCalc.h"
#include "func/LikePattern.h"

namespace {

// The patterns of a typical filter, then one made to hurt a backtracking
// matcher: four % in front of a b that never comes. The regex asks the same
// question of the whole text; both must give the answer in `matches`.
struct LikeCase {
  const char* label;
  const char16_t* like;
  const wchar_t* regex;
  std::u16string text;
  bool matches;
};
constexpr int kPathological = 4;

const std::vector<LikeCase>& LikeCases() {
  static const std::vector<LikeCase> cases = {
      {"abc%", u"abc%", L"abc.*", u"abcdefghij klmnopqrst uvwxyz 0123456789", true},
      {"%xyz", u"%xyz", L".*xyz", u"the quick brown fox jumps over lazy xyz", true},
      {"%x%", u"%x%", L".*x.*", u"the quick brown fox jumps over the dog", true},
      {"[a-c]_%", u"[a-c]_%", L"[a-c]..*", u"b7 and the rest of a forty-unit text", true},
      {"%a%a%a%a%b on 200 a", u"%a%a%a%a%b", L".*a.*a.*a.*a.*b", std::u16string(200, u'a'), false},
  };
  return cases;
}

const LikeCase& Case(const benchmark::State& state) {
  return LikeCases()[static_cast<std::size_t>(state.range(0))];
}

// Labels the run; false, with the run marked failed, for a wrong answer.
bool Check(benchmark::State& state, bool answer) {
  state.SetLabel(std::string(Case(state).label) + (answer ? ", matches" : ", no match"));
  if (answer == Case(state).matches) return true;
  state.SkipWithError("wrong answer");
  return false;
}

// Each call asks the cache for its own copy of the pattern, as a caller does;
// with two threads both share the cache and its lock.
void BM_Like(benchmark::State& state) {
  CString pattern(Case(state).like);
  CString text(std::u16string_view(Case(state).text));
  std::unique_ptr<vkt::func::CLikePattern> first(vkt::func::GetLikePattern(pattern));
  if (!Check(state, vkt::func::MatchLike(first.get(), text, 1) == 1)) return;
  for (auto _ : state) {
    std::unique_ptr<vkt::func::CLikePattern> compiled(vkt::func::GetLikePattern(pattern));
    benchmark::DoNotOptimize(vkt::func::MatchLike(compiled.get(), text, 1));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Like)->DenseRange(0, 4)->Threads(1)->Threads(2)->UseRealTime();

// The match alone on a pattern taken once: the rest of BM_Like is the price
// of the cache and the copy.
void BM_LikeMatchOnly(benchmark::State& state) {
  CString pattern(Case(state).like);
  CString text(std::u16string_view(Case(state).text));
  std::unique_ptr<vkt::func::CLikePattern> compiled(vkt::func::GetLikePattern(pattern));
  if (!Check(state, vkt::func::MatchLike(compiled.get(), text, 1) == 1)) return;
  for (auto _ : state) benchmark::DoNotOptimize(vkt::func::MatchLike(compiled.get(), text, 1));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LikeMatchOnly)->DenseRange(0, 4);

// Compiled once, before any thread times anything, and only read afterwards.
// The answer of the last timed call is checked, so the pathological case,
// over a minute a call, runs exactly once.
void BM_Regex(benchmark::State& state) {
  static const std::vector<std::wregex> regexes = [] {
    std::vector<std::wregex> out;
    for (const LikeCase& c : LikeCases()) out.emplace_back(c.regex);
    return out;
  }();
  const std::wregex& regex = regexes[static_cast<std::size_t>(state.range(0))];
  const std::wstring text(Case(state).text.begin(), Case(state).text.end());
  bool answer = false;
  for (auto _ : state) benchmark::DoNotOptimize(answer = std::regex_match(text, regex));
  if (Check(state, answer)) state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Regex)->DenseRange(0, kPathological - 1)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK(BM_Regex)->Arg(kPathological)->Iterations(1)->Repetitions(1)->UseRealTime();

// Grouped, cut, filled with zeros, and the # that takes all the rest.
constexpr const char16_t* kPictures[][2] = {
    {u"1234567.891", u"#,##0.00"}, {u"-1234.5", u"#,##0.00"}, {u"1234", u"000000"}, {u"1.2345", u"0.0#"}};

// One item is one call; the copy of the text, which FormatNum replaces, is in the time.
void BM_FormatNum(benchmark::State& state) {
  const CString number(kPictures[state.range(0)][0]);
  CString picture(kPictures[state.range(0)][1]);
  CString text(number);
  CUtilityCalc::FormatNum(text, picture);
  state.SetLabel(number.ToUtf8() + " by " + picture.ToUtf8() + " gives " + text.ToUtf8());
  for (auto _ : state) {
    text = number;
    CUtilityCalc::FormatNum(text, picture);
    benchmark::DoNotOptimize(text.GetString());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FormatNum)->DenseRange(0, static_cast<int>(std::size(kPictures)) - 1);

// 40 units: ASCII with blanks and the separators of a query, Latin-1, a
// euro sign and two CJK units.
constexpr const char16_t kMixed[] = u"Prix : 12,50 \u20ac \u2013 caf\u00e9? a=1&b=2 \u4e2d\u6587 merci!";
static_assert(std::size(kMixed) == 41);

void BM_EncodeURI(benchmark::State& state) {
  const CString plain(kMixed);
  CString text(plain);
  CUtilityCalc::EncodeURI(text, 0);
  state.SetLabel(std::to_string(plain.GetLength()) + " units to " + std::to_string(text.GetLength()));
  for (auto _ : state) {
    text = plain;
    benchmark::DoNotOptimize(CUtilityCalc::EncodeURI(text, 0));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_EncodeURI);

void BM_DecodeURI(benchmark::State& state) {
  CString escaped(kMixed);
  CUtilityCalc::EncodeURI(escaped, 0);
  CString text(escaped);
  CUtilityCalc::DecodeURI(text);
  if (text != CString(kMixed)) {
    state.SkipWithError("the escaped text does not come back");
    return;
  }
  state.SetLabel(std::to_string(escaped.GetLength()) + " units to " + std::to_string(text.GetLength()));
  for (auto _ : state) {
    text = escaped;
    CUtilityCalc::DecodeURI(text);
    benchmark::DoNotOptimize(text.GetString());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DecodeURI);

}  // namespace

BENCHMARK_MAIN();
