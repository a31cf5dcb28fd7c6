// bench/DateBench.cpp: reading date text and writing it by a picture, each beside the C library's
// strptime, timegm and strftime on the same texts, and stdev over a thousand arguments beside a
// two-pass mean and variance in doubles.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iterator>
#include <string>
#include <vector>

#include "VKTCalc.h"

namespace {

// The four forms of date text, and the C library's pattern for each.
constexpr const char16_t* kDates[] = {u"2024-01-15", u"20240115", u"2024/1/15 08:30:15",
                                      u"2024-01-15T08:30:00"};
constexpr const char* kPatterns[] = {"%Y-%m-%d", "%Y%m%d", "%Y/%m/%d %H:%M:%S", "%Y-%m-%dT%H:%M:%S"};
constexpr int kDateCount = static_cast<int>(std::size(kDates));
constexpr double kUnixEpochSerial = 25569.0;  // 1 January 1970 as a day serial

// Seconds since 1970 from either side; -1 when the text was not read.
struct VktSide {
  static long long Parse(int form, const std::string&) {
    COleDateTime value;
    if (!CUtilityCalc::String2Time(kDates[form], &value, 0) || value.GetStatus() != COleDateTime::valid)
      return -1;
    return std::llround((value.m_dt - kUnixEpochSerial) * 86400.0);
  }
};
struct CLibrarySide {
  static long long Parse(int form, const std::string& narrow) {
    std::tm fields{};
    if (strptime(narrow.c_str(), kPatterns[form], &fields) == nullptr) return -1;
    return static_cast<long long>(timegm(&fields));
  }
};

template <class Side>
void BM_ParseDate(benchmark::State& state) {
  const int form = static_cast<int>(state.range(0));
  const std::string narrow = CString(kDates[form]).ToUtf8();  // prepared outside the loop
  if (VktSide::Parse(form, narrow) != CLibrarySide::Parse(form, narrow) || VktSide::Parse(form, narrow) < 0) {
    state.SkipWithError("the two sides read different moments");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(Side::Parse(form, narrow));
  state.SetLabel(narrow);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_TEMPLATE(BM_ParseDate, VktSide)->DenseRange(0, kDateCount - 1);
BENCHMARK_TEMPLATE(BM_ParseDate, CLibrarySide)->DenseRange(0, kDateCount - 1);

// A picture and the C library's format for the same text.
struct Picture {
  const char16_t* picture;
  const char* format;
};
constexpr Picture kPictures[] = {
    {u"YYYY-MM-DD", "%Y-%m-%d"},
    {u"Month D, YYYY", "%B %-d, %Y"},
    {u"DD.MM.YY hh:mm:ss", "%d.%m.%y %H:%M:%S"},
};
constexpr int kPictureCount = static_cast<int>(std::size(kPictures));
constexpr const char16_t kFormatDate[] = u"2024-01-15 08:30:15";

// Both sides read the date text and write it at each call.
struct VktFormat {
  static std::string Format(const Picture& picture, const std::string&) {
    CString date(kFormatDate);
    CString out(picture.picture);
    CUtilityCalc::FormatDate(date, out);
    return out.ToUtf8();
  }
};
struct CLibraryFormat {
  static std::string Format(const Picture& picture, const std::string& narrow) {
    std::tm fields{};
    if (strptime(narrow.c_str(), "%Y-%m-%d %H:%M:%S", &fields) == nullptr) return {};
    char out[64];
    return std::string(out, std::strftime(out, sizeof out, picture.format, &fields));
  }
};

template <class Side>
void BM_FormatDate(benchmark::State& state) {
  const Picture& picture = kPictures[state.range(0)];
  const std::string narrow = CString(kFormatDate).ToUtf8();
  const std::string shown = VktFormat::Format(picture, narrow);
  if (shown != CLibraryFormat::Format(picture, narrow)) {
    state.SkipWithError(("the two sides differ: " + shown).c_str());
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(Side::Format(picture, narrow));
  state.SetLabel(shown);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_TEMPLATE(BM_FormatDate, VktFormat)->DenseRange(0, kPictureCount - 1);
BENCHMARK_TEMPLATE(BM_FormatDate, CLibraryFormat)->DenseRange(0, kPictureCount - 1);

// A thousand texts with two decimals, 0 to 99.99, from a fixed stride.
constexpr int kValueCount = 1000;
std::vector<std::string> ValueTexts() {
  std::vector<std::string> texts;
  for (int i = 0; i < kValueCount; ++i) {
    const int hundredths = (i * 7919) % 10000;
    char text[16];
    std::snprintf(text, sizeof text, "%d.%02d", hundredths / 100, hundredths % 100);
    texts.emplace_back(text);
  }
  return texts;
}

// The body through the manager's call, as the calculator makes it; the texts sit in the frame.
struct VktStdev {
  explicit VktStdev(const std::vector<std::string>& texts) : manager(CFuncMnger::NewFuncMnger()) {
    para.strName = u"stdev";
    for (const std::string& text : texts) para.arrArgs.Add(CString(text.c_str()));
  }
  ~VktStdev() { delete manager; }
  double Run() {
    CErrorCollector errors;
    if (manager->CallFunc(para, 0, &errors, -1) != 1) return -1.0;
    return CGmp::Str2Double(para.strResult.GetString(), 0);
  }
  CFuncMnger* manager;
  CFuncPara para;
};
// The same texts read by strtod at each call, then the mean and the sum of squared deviations.
struct DoubleStdev {
  explicit DoubleStdev(const std::vector<std::string>& given) : texts(given), values(given.size()) {}
  double Run() {
    double sum = 0.0;
    for (std::size_t i = 0; i < texts.size(); ++i) sum += values[i] = std::strtod(texts[i].c_str(), nullptr);
    const double mean = sum / static_cast<double>(values.size());
    double squares = 0.0;
    for (double value : values) squares += (value - mean) * (value - mean);
    return std::sqrt(squares / static_cast<double>(values.size() - 1));
  }
  std::vector<std::string> texts;
  std::vector<double> values;
};

template <class Side>
void BM_Stdev(benchmark::State& state) {
  const std::vector<std::string> texts = ValueTexts();
  Side side(texts);
  const double expected = DoubleStdev(texts).Run();
  const double got = side.Run();
  if (!(std::fabs(got - expected) < 1e-9 * expected)) {
    state.SkipWithError("the two sides disagree");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(side.Run());
  state.SetLabel(std::to_string(got));
  state.SetItemsProcessed(state.iterations() * kValueCount);
}
BENCHMARK_TEMPLATE(BM_Stdev, VktStdev);
BENCHMARK_TEMPLATE(BM_Stdev, DoubleStdev);

}  // namespace

BENCHMARK_MAIN();
