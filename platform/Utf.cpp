// platform/Utf.cpp: UTF-16 <-> UTF-8, replacing what cannot be converted by
// U+FFFD rather than failing, since every caller wants text back.
#include "platform/Utf.h"

namespace vkt::platform {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void PutUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

void PutUtf16(std::u16string& out, char32_t cp) {
  if (cp < 0x10000) {
    out += static_cast<char16_t>(cp);
  } else {
    cp -= 0x10000;
    out += static_cast<char16_t>(0xD800 | (cp >> 10));
    out += static_cast<char16_t>(0xDC00 | (cp & 0x3FF));
  }
}

}  // namespace

std::string Utf16ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t unit = text[i];
    if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
        text[i + 1] <= 0xDFFF) {
      char32_t low = text[++i];
      PutUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00));
    } else if (unit >= 0xD800 && unit <= 0xDFFF) {
      PutUtf8(out, kReplacement);
    } else {
      PutUtf8(out, unit);
    }
  }
  return out;
}

std::u16string Utf8ToUtf16(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    unsigned char lead = static_cast<unsigned char>(text[i]);
    if (lead < 0x80) {
      out += static_cast<char16_t>(lead);
      ++i;
      continue;
    }
    int extra;
    char32_t cp;
    char32_t minimum;
    if (lead >= 0xC2 && lead <= 0xDF) {
      extra = 1, cp = lead & 0x1F, minimum = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      extra = 2, cp = lead & 0x0F, minimum = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      extra = 3, cp = lead & 0x07, minimum = 0x10000;
    } else {
      out += static_cast<char16_t>(kReplacement);
      ++i;
      continue;
    }
    std::size_t j = i + 1;
    int taken = 0;
    while (taken < extra && j < text.size() &&
           (static_cast<unsigned char>(text[j]) & 0xC0) == 0x80) {
      cp = (cp << 6) | (static_cast<unsigned char>(text[j]) & 0x3F);
      ++j;
      ++taken;
    }
    if (taken < extra || cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
      // A truncated, overlong or surrogate sequence: one replacement for it.
      out += static_cast<char16_t>(kReplacement);
    } else {
      PutUtf16(out, cp);
    }
    i = j;
  }
  return out;
}

}  // namespace vkt::platform
