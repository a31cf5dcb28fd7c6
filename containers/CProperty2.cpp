// containers/CProperty2.cpp: the named properties of host objects, an ordered
// list kept as two parallel arrays: name pointers from a shared CMapProp and
// value handles of the process text cache. Lookups by name walk the list.
// Every operation reaches the others through the virtual table, so a host's
// subclass may replace any of them; the subclass also gives SetProperty.
#include "CProperty2.h"

#include <string_view>

#include "CTextCache.h"
#include "foundation/CStrKit.h"
#include "platform/WideRuntime.h"

namespace {

bool Inside(int i, int size) { return i >= 0 && i < size; }

// Chosen: a blank is a space or a tab, the two a host writes between names.
bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

// Gives every handle back to the cache, the last first.
void ReleaseValues(CUIntArray& values) {
  for (int i = values.GetSize() - 1; i >= 0; --i) GetCache()->Remove(values[i]);
}

// True when one of the '|'-separated alternatives in `list` equals `name`
// ignoring case. Blanks around an alternative do not count; an empty
// alternative ends the walk, so the ones behind it are never tried.
bool AnyAlternative(const CString& name, const char16_t* list) {
  const int length = name.GetLength();
  for (const char16_t* p = list;;) {
    while (IsBlank(*p)) ++p;
    const char16_t* next = p;
    while (*next != 0 && *next != u'|') ++next;
    const char16_t* end = next;
    while (end > p && IsBlank(end[-1])) --end;
    if (end == p) return false;
    if (end - p == length && CStrKit::strstr(name, p, length, length, 0) == 0) return true;
    if (*next == 0) return false;
    p = next + 1;
  }
}

}  // namespace

CProperty2::CProperty2() : bTakeOnRead(0), pMapProp(nullptr) {}

CProperty2::~CProperty2() {
  ReleaseValues(aValues);
  if (pMapProp != nullptr) pMapProp->Release();
}

int CProperty2::Prop_GetName(int i, CString& out) {
  if (!Inside(i, aNames.GetSize())) return 0;
  out = aNames[i];
  return 1;
}

int CProperty2::Prop_GetValue(int i, CString& out) {
  if (!Inside(i, aValues.GetSize())) return 0;
  GetCache()->Get(aValues[i], out);  // a handle the cache no longer knows reads as empty
  return 1;
}

int CProperty2::Prop_GetAt(int i, CString& name, CString& value) {
  if (!Inside(i, aNames.GetSize())) return 0;
  this->Prop_GetName(i, name);
  this->Prop_GetValue(i, value);
  return 1;
}

int CProperty2::Prop_SetName(int i, const char16_t* name) {
  if (!Inside(i, aNames.GetSize())) return 0;
  aNames[i] = this->GetMapProp()->Intern(name);  // empty text leaves a null name
  return 1;
}

int CProperty2::Prop_SetValue(int i, const char16_t* value) {
  if (!Inside(i, aValues.GetSize())) return 0;
  GetCache()->Remove(aValues[i]);
  aValues[i] = GetCache()->Add(value, -1);
  return 1;
}

int CProperty2::Prop_SetAt(int i, const char16_t* name, const char16_t* value) {
  if (this->Prop_SetName(i, name) == 0) return 0;
  return this->Prop_SetValue(i, value);
}

// Inside the list the name is interned as it is, so an empty name is inserted
// as a null one, the same entry Prop_SetName makes of empty text; only the
// path through Prop_Add refuses it.
void CProperty2::Prop_InsertAt(int i, CString& name, CString& value) {
  if (!Inside(i, aNames.GetSize())) {
    this->Prop_Add(name, value, 0);
    return;
  }
  aNames.InsertAt(i, this->GetMapProp()->Intern(name));
  aValues.InsertAt(i, GetCache()->Add(value.GetString(), value.GetLength()));
}

int CProperty2::Prop_Add(const char16_t* name, const char16_t* value, int bShared) {
  const char16_t* stored = bShared ? name : this->GetMapProp()->Intern(name);
  if (stored == nullptr) return -1;
  const int index = aNames.Add(stored);
  aValues.Add(GetCache()->Add(value, -1));
  return index;
}

int CProperty2::Prop_DeleteAt(int i) {
  if (!Inside(i, aValues.GetSize())) return 0;
  GetCache()->Remove(aValues[i]);
  aNames.RemoveAt(i);
  aValues.RemoveAt(i);
  return 1;
}

void CProperty2::Prop_RemoveAll() {
  ReleaseValues(aValues);
  aNames.RemoveAll();
  aValues.RemoveAll();
}

int CProperty2::Prop_GetCount() { return aNames.GetSize(); }

// Chosen: copying a list onto itself keeps it; removing first would lose it.
// An entry of empty name is not copied, as Prop_Add refuses such names.
void CProperty2::Prop_Copy(CProperty2* from) {
  if (from == nullptr || from == this) return;
  this->Prop_RemoveAll();
  const int count = from->Prop_GetCount();
  aNames.SetSize(0, count);
  aValues.SetSize(0, count);
  CString name;
  CString value;
  for (int i = 0; i < count; ++i)
    if (from->Prop_GetAt(i, name, value) != 0) this->Prop_Add(name, value, 0);
}

int CProperty2::Prop_GetAll(CStringArray& names, CStringArray& values) {
  const int count = this->Prop_GetCount();
  names.SetSize(count);
  values.SetSize(count);
  for (int i = 0; i < count; ++i) this->Prop_GetAt(i, names[i], values[i]);
  return count;
}

void CProperty2::Prop_Delete(const char16_t* name) {
  if (name != nullptr) this->Prop_DeleteAt(this->FindProperty(name));
}

// With alternatives the walk goes by entry first, so the first entry that
// matches any alternative wins, whatever the alternatives' order.
int CProperty2::FindProperty(const char16_t* name) {
  if (name == nullptr) return -1;
  if (std::u16string_view(name).find(u'|') == std::u16string_view::npos) return this->_FindProperty(name);
  const int count = this->Prop_GetCount();
  CString entry;
  for (int i = 0; i < count; ++i)
    if (this->Prop_GetName(i, entry) != 0 && AnyAlternative(entry, name)) return i;
  return -1;
}

int CProperty2::GetProperty(const char16_t* name, CString& out) {
  const int index = this->FindProperty(name);
  if (index < 0) {
    out.Empty();
    return 0;
  }
  this->Prop_GetValue(index, out);
  if (bTakeOnRead) this->Prop_DeleteAt(index);
  return 1;
}

void CProperty2::GetStr(CString& out, const char16_t* name, const char16_t* def) {
  const int index = this->FindProperty(name);
  if (index < 0) {
    out = def;
    return;
  }
  this->Prop_GetValue(index, out);
  if (bTakeOnRead) this->Prop_DeleteAt(index);
}

// Chosen: a name without a value at the same index sets the empty value.
void CProperty2::AddProps(CStringArray& names, CStringArray& values, int flag) {
  const CString none;
  for (int i = 0; i < names.GetSize(); ++i)
    this->SetProperty(names[i], i < values.GetSize() ? values[i] : none, flag);
}

// Null and empty are one query; the walk reads the array itself, so it costs
// one comparison per entry and no copy.
int CProperty2::_FindProperty(const char16_t* name) {
  const bool wantEmpty = name == nullptr || name[0] == 0;
  for (int i = 0; i < aNames.GetSize(); ++i) {
    const char16_t* entry = aNames[i];
    const bool entryEmpty = entry == nullptr || entry[0] == 0;
    if (wantEmpty ? entryEmpty : !entryEmpty && vkt::_wcsicmp(entry, name) == 0) return i;
  }
  return -1;
}

CMapProp* CProperty2::GetMapProp() {
  if (pMapProp == nullptr) {
    pMapProp = new CMapProp;
    pMapProp->AddRef();
  }
  return pMapProp;
}

// An earlier store is kept, not released: names already in the list may
// point into it. Chosen: null, or the store already held, changes nothing.
void CProperty2::SetMapProp(CMapProp* p) {
  if (p == nullptr || p == pMapProp) return;
  pMapProp = p;
  p->AddRef();
}
