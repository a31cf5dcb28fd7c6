// foundation/CStringBuilder.cpp: the string builder, a terminated wide
// buffer written through the CWriter operations.
#include "foundation/CStringBuilder.h"

CStringBuilder::CStringBuilder(int size) : CBuffer(size) {}

CStringBuilder::~CStringBuilder() = default;

int CStringBuilder::Append(const char16_t* text) { return AddText(text, -1); }

int CStringBuilder::Append(CString& text) { return AddText(text); }

int CStringBuilder::Append(WORD unit) { return Add(unit); }

void CStringBuilder::GetStr(CString& out) {
  out = CString(CBuffer::GetStr(), nSize / 2);
}

const char16_t* CStringBuilder::GetStr() { return CBuffer::GetStr(); }
