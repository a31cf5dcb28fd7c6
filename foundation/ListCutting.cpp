// foundation/ListCutting.cpp: the separator cut under CUtilityCalc's list
// services. It compares 16-bit units exactly and knows nothing of quotes,
// case or locale: a separator inside quotes cuts like any other.
#include "foundation/ListCutting.h"

#include <climits>
#include <string_view>
#include <utility>

#include "platform/WideRuntime.h"

namespace vkt {
namespace {

// Occurrences as the cut finds them, each search going on behind the last.
int CountSeparators(std::u16string_view text, std::u16string_view sep) {
  int count = 0;
  for (std::size_t pos = text.find(sep); pos != std::u16string_view::npos;
       pos = text.find(sep, pos + sep.size())) {
    if (count == INT_MAX - 1) break;  // only a size hint; keeps count + 1 in range
    ++count;
  }
  return count;
}

std::u16string_view TrimBlanks(std::u16string_view item) {
  std::size_t first = item.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return {};
  return item.substr(first, item.find_last_not_of(u' ') - first + 1);
}

}  // namespace

void CutList(CStringArray& out, const char16_t* text, const char16_t* sep, int sepLength, bool trim) {
  out.RemoveAll();
  if (text == nullptr || *text == 0 || sep == nullptr || sepLength <= 0) return;
  const std::u16string_view whole(text, vkt::wcslen(text));
  const std::u16string_view separator(sep, static_cast<std::size_t>(sepLength));

  out.SetSize(0, CountSeparators(whole, separator) + 1);
  const bool endsInSeparator = whole.ends_with(separator);

  std::size_t pos = 0;
  for (std::size_t hit = whole.find(separator); hit != std::u16string_view::npos;
       hit = whole.find(separator, pos)) {
    std::u16string_view item = whole.substr(pos, hit - pos);
    out.Add(CString(trim ? TrimBlanks(item) : item));
    pos = hit + separator.size();
  }

  // The ending is judged on the whole text, not on what the cut left: when a
  // separator can overlap itself, the text may end in one that the scan
  // stepped over, and then the leftover gives way to the empty item.
  if (endsInSeparator) {
    out.Add(CString());
    return;
  }
  CString rest(whole.substr(pos));
  if (trim) rest.Trim();
  out.Add(std::move(rest));
}

}  // namespace vkt
