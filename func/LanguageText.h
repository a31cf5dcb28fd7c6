// func/LanguageText.h: texts by number through the host's language
// interface, and the one way the library fills a text's "%s". Internal.
#pragma once

#include "platform/CString.h"

namespace vkt {

// The language text of a number, copied at once. Chosen: with no language
// interface installed every number has the empty text, rather than a call
// through null.
CString LanguageText(int id);

// Translates in place through the language interface; without one the text
// stays as it is.
void TranslateLanguageText(CString& text);

// `format` as a format with the one text argument `arg`: the first "%s"
// takes it and "%%" is a percent sign. Chosen: a further "%s" has no
// argument and is dropped, and any other percent code stays as it stands,
// so that a host's text can never make us read an argument not passed.
CString FormatOneArgument(const CString& format, const CString& arg);

}  // namespace vkt
