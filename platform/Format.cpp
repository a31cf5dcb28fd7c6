// platform/Format.cpp: printf-style formatting into a CString. Numbers are
// rendered by the C library's snprintf, one conversion at a time; text
// conversions are done here, since the C library knows no 16-bit text.
#include "platform/Format.h"

#include <cstdio>
#include <string>

#include "platform/WideRuntime.h"

namespace vkt::platform {

namespace {

constexpr int kMaxWidth = 100000;  // caps width and precision, so a format can't ask for gigabytes

enum class Size { kDefault, kShort, kLong, kLongLong };

// One conversion as read from the format: %[flags][width][.precision][size]conversion
struct Conversion {
  std::string spec = "%";  // narrow printf text so far, without size and conversion
  bool leftAlign = false;
  int width = -1;          // -1: none
  int precision = -1;      // -1: none
  Size size = Size::kDefault;
  char16_t conversion = 0;
};

int ReadNumber(const char16_t*& p, int start) {
  int value = start;
  while (*p >= u'0' && *p <= u'9') {
    value = value * 10 + (*p++ - u'0');
    if (value > kMaxWidth) value = kMaxWidth;
  }
  return value;
}

void ReadFlagsAndWidth(const char16_t*& p, va_list* args, Conversion& c) {
  while (*p == u'-' || *p == u'+' || *p == u' ' || *p == u'#' || *p == u'0') {
    if (*p == u'-') c.leftAlign = true;
    c.spec += static_cast<char>(*p++);
  }
  if (*p == u'*') {
    c.width = va_arg(*args, int);
    if (c.width < 0) {
      c.leftAlign = true;
      c.spec += '-';
      c.width = -c.width;
    }
    ++p;
  } else if (*p >= u'0' && *p <= u'9') {
    c.width = ReadNumber(p, 0);
  }
  if (c.width >= 0) c.spec += std::to_string(c.width);
}

void ReadPrecision(const char16_t*& p, va_list* args, Conversion& c) {
  if (*p != u'.') return;
  ++p;
  if (*p == u'*') {
    c.precision = va_arg(*args, int);
    ++p;
  } else {
    c.precision = ReadNumber(p, 0);
  }
  if (c.precision >= 0) {
    c.spec += '.';
    c.spec += std::to_string(c.precision);
  }
}

void ReadSize(const char16_t*& p, Conversion& c) {
  if (p[0] == u'I' && p[1] == u'6' && p[2] == u'4') {
    c.size = Size::kLongLong;
    p += 3;
  } else if (p[0] == u'I' && p[1] == u'3' && p[2] == u'2') {
    p += 3;
  } else if (p[0] == u'l' && p[1] == u'l') {
    c.size = Size::kLongLong;
    p += 2;
  } else if (*p == u'l') {
    c.size = Size::kLong;
    ++p;
  } else if (*p == u'h') {
    c.size = Size::kShort;
    ++p;
  }
}

// Renders one conversion of the C library into out. spec is a narrow printf
// conversion such as "%-08.3f".
template <class T>
void AppendNarrow(CString& out, const std::string& spec, T value) {
  char small[128];
  int n = std::snprintf(small, sizeof small, spec.c_str(), value);
  if (n < 0) return;
  if (static_cast<std::size_t>(n) < sizeof small) {
    for (int i = 0; i < n; ++i) out += static_cast<char16_t>(static_cast<unsigned char>(small[i]));
    return;
  }
  std::string big(static_cast<std::size_t>(n) + 1, '\0');
  std::snprintf(big.data(), big.size(), spec.c_str(), value);
  for (int i = 0; i < n; ++i) out += static_cast<char16_t>(static_cast<unsigned char>(big[i]));
}

// Pads text to width with blanks, on the left unless leftAlign.
void AppendPadded(CString& out, const char16_t* text, int length, const Conversion& c) {
  if (c.precision >= 0 && c.precision < length) length = c.precision;
  const int pad = c.width > length ? c.width - length : 0;
  if (!c.leftAlign) out += CString(u' ', pad);
  out.Append(text, length);
  if (c.leftAlign) out += CString(u' ', pad);
}

void AppendInteger(CString& out, const Conversion& c, va_list* args) {
  const char type = static_cast<char>(c.conversion);
  if (type == 'd' || type == 'i') {
    if (c.size == Size::kLongLong) AppendNarrow(out, c.spec + "lld", va_arg(*args, long long));
    else if (c.size == Size::kLong) AppendNarrow(out, c.spec + "ld", va_arg(*args, long));
    else AppendNarrow(out, c.spec + "d", va_arg(*args, int));
    return;
  }
  if (c.size == Size::kLongLong) AppendNarrow(out, c.spec + "ll" + type, va_arg(*args, unsigned long long));
  else if (c.size == Size::kLong) AppendNarrow(out, c.spec + "l" + type, va_arg(*args, unsigned long));
  else AppendNarrow(out, c.spec + type, va_arg(*args, unsigned int));
}

void AppendConversion(CString& out, const Conversion& c, va_list* args) {
  switch (c.conversion) {
    case u'd': case u'i': case u'u': case u'x': case u'X': case u'o':
      AppendInteger(out, c, args);
      break;
    case u'f': case u'F': case u'e': case u'E': case u'g': case u'G':
      AppendNarrow(out, c.spec + static_cast<char>(c.conversion), va_arg(*args, double));
      break;
    case u'p':
      AppendNarrow(out, c.spec + "p", va_arg(*args, void*));
      break;
    case u'c':
    case u'C': {
      const char16_t ch = static_cast<char16_t>(va_arg(*args, int));
      Conversion whole = c;
      whole.precision = -1;  // a precision never cuts the one character
      AppendPadded(out, &ch, 1, whole);
      break;
    }
    case u's': {
      const char16_t* text = va_arg(*args, const char16_t*);
      if (text == nullptr) text = u"(null)";
      AppendPadded(out, text, static_cast<int>(wcslen(text)), c);
      break;
    }
    case u'S': {
      const char* narrow = va_arg(*args, const char*);
      const CString text(narrow != nullptr ? narrow : "(null)");
      AppendPadded(out, text.GetString(), text.GetLength(), c);
      break;
    }
    default:  // unknown conversions are copied as they stand
      out += u'%';
      out += c.conversion;
      break;
  }
}

}  // namespace

void FormatInto(CString& out, const char16_t* format, va_list args) {
  if (format == nullptr) return;
  va_list rest;  // walked by pointer, so every step sees what the one before took
  va_copy(rest, args);
  const char16_t* p = format;
  while (*p) {
    if (*p != u'%') {
      const char16_t* run = p;
      while (*p && *p != u'%') ++p;
      out.Append(run, static_cast<int>(p - run));
      continue;
    }
    ++p;
    if (*p == u'%') {
      out += u'%';
      ++p;
      continue;
    }
    Conversion c;
    ReadFlagsAndWidth(p, &rest, c);
    ReadPrecision(p, &rest, c);
    ReadSize(p, c);
    c.conversion = *p;
    if (c.conversion == 0) break;  // a lone '%' at the end prints nothing
    ++p;
    AppendConversion(out, c, &rest);
  }
  va_end(rest);
}

}  // namespace vkt::platform
