// tools/ToolLanguage.cpp: the English texts of the vktcalc tool, by number.
// One sorted table holds the error numbers the library reports and every
// id of the built-in function table; the tool installs the interface once,
// before anything can ask for a text.
#include "tools/ToolLanguage.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace vkt::tool {

namespace {

struct Text {
  int id;
  const char16_t* text;
};

// Ascending by id: looked up by binary search.
constexpr Text kTexts[] = {
    // Parameter help and descriptions below 1000.
    {631, u"(digits, [plain])"},
    {653, u"The first moment of the month of a date."},
    {654, u"The first moment of the quarter of a date."},
    {655, u"The first moment of the year of a date."},
    {656, u"The last moment of the month of a date."},
    {657, u"The last moment of the quarter of a date."},
    {658, u"The last moment of the year of a date."},
    {797, u"The number that a text holds, with everything else dropped."},
    {837, u"1 when the text matches the pattern, else 0."},
    {838, u"(text, pattern, [matchCase])"},
    {892, u"The position in the second text of the first character of the first text "
          u"that it holds, or -1."},
    {951, u"The standard deviation of a sample; texts are left out."},
    {952, u"The standard deviation of a whole population; a text counts as 0, true as 1."},
    {953, u"The variance of a sample; texts are left out."},
    {954, u"The variance of a whole population; a text counts as 0, true as 1."},
    {955, u"The standard deviation of a sample; a text counts as 0, true as 1."},
    {956, u"The standard deviation of a whole population; texts are left out."},
    {957, u"The variance of a sample; a text counts as 0, true as 1."},
    {958, u"The variance of a whole population; texts are left out."},
    {967, u"The middle value of the arguments."},

    // Error numbers. "%s" takes the expression or the call that failed.
    {1000, u"Invalid function name: %s"},
    {1001, u"A name cannot start with digits: %s"},
    {1003, u"Invalid expression or call: %s"},
    {1004, u"Value out of range: %s"},
    {1005, u"Numbers and texts mixed: %s"},

    // Categories.
    {1006, u"Control"},
    {1007, u"Mathematics and statistics"},
    {1008, u"Text, and numbers as text"},
    {1009, u"Date and time"},

    // Descriptions and parameter help.
    {1010, u"The second argument when the condition is not zero, else the third."},
    {1011, u"The sum of the arguments."},
    {1012, u"The mean of the arguments; a blank counts as zero."},
    {1013, u"The largest of the arguments."},
    {1014, u"The smallest of the arguments."},
    {1015, u"The value without its minus sign."},
    {1016, u"The number rounded to so many decimals; a half rounds away from zero."},
    {1017, u"The remainder of the first number divided by the second."},
    {1018, u"The value rounded down to a whole number."},
    {1019, u"The largest whole number not above the value."},
    {1020, u"The smallest whole number not below the value."},
    {1021, u"The square root of the value."},
    {1022, u"e raised to the power of the value."},
    {1023, u"A random whole number from 0 to 99."},
    {1024, u"The natural logarithm of the value."},
    {1025, u"The base-10 logarithm of the value."},
    {1026, u"The base raised to the power of the exponent."},
    {1027, u"The number of characters of a text."},
    {1029, u"The first characters of a text."},
    {1031, u"The last characters of a text."},
    {1033, u"Characters from the middle of a text."},
    {1035, u"The text with a part of it replaced."},
    {1037, u"Every digit of the text as a Chinese numeral."},
    {1038, u"Calendar years from the first date to the second."},
    {1039, u"Calendar months from the first date to the second."},
    {1040, u"Whole days from the first date to the second."},
    {1041, u"Whole hours from the first date to the second."},
    {1042, u"Whole minutes from the first date to the second."},
    {1043, u"The date moved by a number of years."},
    {1044, u"The date moved by a number of months."},
    {1045, u"The date moved by a number of days."},
    {1046, u"The date moved by a number of hours."},
    {1047, u"The date moved by a number of minutes."},
    {1048, u"The year of a date."},
    {1049, u"The month of a date."},
    {1050, u"The day of the month of a date."},
    {1051, u"The hour of a date."},
    {1052, u"The minute of a date."},
    {1053, u"The current date and time."},
    {1054, u"1 when the first date is later, -1 when it is earlier, 0 when they are equal."},
    {1055, u"(condition, then, else)"},
    {1056, u"(value, ...)"},
    {1057, u"(value)"},
    {1058, u"(number, decimals)"},
    {1059, u"(first, second)"},
    {1060, u"(base, exponent)"},
    {1061, u"(text, count)"},
    {1062, u"(text, start, count)"},
    {1063, u"(text, start, count, new)"},
    {1064, u"(from, to)"},
    {1065, u"([picture])"},

    {1068, u"Invalid variable name: %s"},
    {1070, u"Brackets do not match: %s"},
    {1072, u"A function failed without saying why."},

    {1107, u"An amount in the capital Chinese characters of finance."},
    {1108, u"A number in English words."},
    {1110, u"A date written by a date picture."},
    {1111, u"A date in the capital Chinese numerals of cheques."},
    {1112, u"(date, picture)"},
    {1113, u"(date, [picture])"},
    {1114, u"A date in Chinese numerals."},
    {1115, u"The value as a percentage."},
    {1119, u"The position of a text within another, or -1."},
    {1120, u"(text, search, [start], [matchCase])"},
    {1140, u"1 when the text ends with the ending, else 0."},
    {1141, u"The order of two texts by the locale: below 0, 0 or above 0."},
    {1142, u"(text, ending, [matchCase])"},
    {1143, u"(text, other, [matchCase])"},
    {1144, u"The result of a script function of the host."},
    {1145, u"(name, [argument, ...])"},
    {1146, u"The text encoded as a URI."},
    {1147, u"The text encoded as one component of a URI."},
    {1219, u"The text in upper case."},
    {1220, u"The text in lower case."},
    {1244, u"The text without the given characters, blanks by default, at both ends."},
    {1245, u"The text without the given characters, blanks by default, at its start."},
    {1246, u"The text without the given characters, blanks by default, at its end."},
    {1247, u"(text, [characters])"},
    {1264, u"A number written by a number picture."},
    {1265, u"(number, picture)"},
    {1293, u"(text, old, new)"},
    {1295, u"Lists of numbers added item by item."},
    {1306, u"The position of an item in a separated list, or -1."},
    {1307, u"(list, item, [start], [matchCase], [separator])"},
    {1308, u"Working days from the first date up to the second."},
    {1309, u"(from, to, [rules])"},
    {1310, u"The last position of a text within another, or -1."},
    {1318, u"The day of the week of a date: 0 for Sunday to 6, or its name."},
    {1319, u"The day of the year of a date: 1 for 1 January."},
    {1320, u"(date, [form])"},
    {1322, u"The week of the year of a date; week 1 holds 1 January."},
    {1323, u"(date, amount)"},
    {1324, u"(date, [mondayFirst])"},
    {1328, u"The text with each character of a set replaced."},
    {1329, u"(text, characters, new)"},
    {1334, u"The texts joined into one."},
    {1335, u"(text, ..., [options])"},
};

static_assert(std::is_sorted(std::begin(kTexts), std::end(kTexts),
                             [](const Text& a, const Text& b) { return a.id < b.id; }),
              "kTexts must ascend by id");

}  // namespace

const char16_t* ToolLanguage::Find(int nID) {
  const Text* end = std::end(kTexts);
  const Text* it = std::lower_bound(std::begin(kTexts), end, nID,
                                    [](const Text& entry, int id) { return entry.id < id; });
  return it != end && it->id == nID ? it->text : nullptr;
}

const char16_t* ToolLanguage::GetText(int nID) {
  if (const char16_t* text = Find(nID)) return text;
  m_unknown = u"(text ";
  for (char c : std::to_string(nID)) m_unknown.push_back(static_cast<char16_t>(c));
  m_unknown += u")";
  return m_unknown.c_str();
}

void ToolLanguage::TranslateText(CString&) {}

}  // namespace vkt::tool
