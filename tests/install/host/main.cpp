// A host of the library: it includes the one public header, calls plain
// exports and statics, and prints what it got. Exit 0 when all answered as
// a freshly loaded library must.
#include <VKTCalc.h>

#include <cstdio>

int main() {
  CString format;
  GetDateTimeFormat(format, 1);
  COleDateTime time(2024, 3, 3, 14, 5, 6);
  CString text = TimeToString(time, 0);
  std::printf("%s|%s|%d\n", format.ToUtf8().c_str(), text.ToUtf8().c_str(),
              CUtilityCalc::Calc_IsChineseEnabled());
  bool ok = format == u"%Y.%m.%d" && text == u"2024.03.03 14:05:06" &&
            CUtilityCalc::Calc_IsChineseEnabled() == 1 && GetTickTime() > 0;
  return ok ? 0 : 1;
}
