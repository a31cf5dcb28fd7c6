// platform/Utf.h: conversions between UTF-16 and UTF-8. Internal.
//
// Malformed input never fails: each bad UTF-8 sequence and each lone
// surrogate becomes U+FFFD, so a conversion always gives text.
#pragma once

#include <string>
#include <string_view>

namespace vkt::platform {

std::string Utf16ToUtf8(std::u16string_view text);
std::u16string Utf8ToUtf16(std::string_view text);

}  // namespace vkt::platform
