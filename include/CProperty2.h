// CProperty2.h: an ordered list of named properties for host objects, whose
// names are shared copies in a CMapProp and whose values are handles of the
// text cache (CTextCache.h).
//
// The order of the virtual operations and of the fields is part of the
// interface; every call between the operations goes through the virtual
// table, so a subclass may replace any of them.
#pragma once

#include <atomic>

#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/CString.h"
#include "platform/Maps.h"
#include "platform/Sync.h"
#include "platform/Types.h"

// One shared copy of each name, case-sensitive, for as long as the store
// lives. Thread-safe; counted by AddRef and Release.
class VKTCALC_API CMapProp {
 public:
  CMapProp();  // no owner yet: the count starts at 0
  CMapProp(const CMapProp&) = delete;
  CMapProp& operator=(const CMapProp&) = delete;

  virtual ~CMapProp();  // frees every copy
  // Frees every copy: all names of all lists that use the store die.
  virtual void RemoveAll();
  // The stored copy of text, made on first sight; null for null or empty.
  virtual const char16_t* Intern(const char16_t* text);
  virtual const char16_t* Intern(CString& text);
  // The stored copy, or null; nothing is added.
  virtual const char16_t* Lookup(const char16_t* text);
  virtual LONG AddRef();   // the new count
  virtual LONG Release();  // the new count; at 0 the store deletes itself

  CCritSec lock;
  CMapStringToOb map;  // text to its copy (the copy's pointer as the value)
  std::atomic<LONG> nRefs;
};

class VKTCALC_API CProperty2 {
 public:
  CProperty2();
  CProperty2(const CProperty2&) = delete;
  CProperty2& operator=(const CProperty2&) = delete;

  // Releases the value handles, last first, and the store.
  virtual ~CProperty2();
  // The index-based operations answer 0 (or do nothing) outside the list.
  virtual int Prop_GetName(int i, CString& out);
  virtual int Prop_GetValue(int i, CString& out);
  virtual int Prop_GetAt(int i, CString& name, CString& value);
  virtual int Prop_SetName(int i, const char16_t* name);
  virtual int Prop_SetValue(int i, const char16_t* value);
  virtual int Prop_SetAt(int i, const char16_t* name, const char16_t* value);
  // At i inside the list, else added at the end.
  virtual void Prop_InsertAt(int i, CString& name, CString& value);
  // The new index, or -1 for a null name (an empty one too, unless
  // bShared). bShared stores the caller's pointer, which must live as long
  // as the list, instead of an interned copy.
  virtual int Prop_Add(const char16_t* name, const char16_t* value, int bShared);
  virtual int Prop_DeleteAt(int i);
  virtual void Prop_RemoveAll();
  virtual int Prop_GetCount();
  // This list becomes a copy of from, names interned in this list's store.
  virtual void Prop_Copy(CProperty2* from);
  virtual int Prop_GetAll(CStringArray& names, CStringArray& values);  // the count
  virtual void Prop_Delete(const char16_t* name);
  // The first entry whose name equals name ignoring case, or -1; "a|b"
  // finds the first entry matching any alternative, blanks trimmed.
  virtual int FindProperty(const char16_t* name);
  // 1 with the value in out, else 0 and out empty; bTakeOnRead deletes it.
  virtual int GetProperty(const char16_t* name, CString& out);
  // The value, or def when there is none; bTakeOnRead deletes it.
  virtual void GetStr(CString& out, const char16_t* name, const char16_t* def);
  // The host's subclass gives it; AddProps calls it for each pair.
  virtual int SetProperty(const char16_t* name, const char16_t* value, int flag) = 0;
  virtual void AddProps(CStringArray& names, CStringArray& values, int flag);
  // Without alternatives: null and empty find an entry of empty name.
  virtual int _FindProperty(const char16_t* name);
  // The store, made on first need.
  virtual CMapProp* GetMapProp();
  // Shares p (AddRef); call before the first name is added.
  virtual void SetMapProp(CMapProp* p);

  int bTakeOnRead;     // nonzero: reading by name removes the entry
  CMapProp* pMapProp;  // counted; null until first needed
  CArray<const char16_t*, const char16_t*> aNames;  // not owned
  CUIntArray aValues;  // cache handles, 0 for the empty value
};
