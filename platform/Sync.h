// platform/Sync.h: the library's lock and its scope guard.
//
// CCritSec is a critical section: one thread at a time holds it, and the
// holding thread may enter it again (each Lock then needs its Unlock). It
// can be neither copied nor moved. CCritSecGuard enters a CCritSec for the
// life of a scope and leaves it however the scope ends.
#pragma once

#include <mutex>

#include "VKTCalcExport.h"

// The base of the framework's locking objects.
class VKTCALC_API CSyncObject {
 public:
  CSyncObject() = default;
  CSyncObject(const CSyncObject&) = delete;
  CSyncObject& operator=(const CSyncObject&) = delete;
  virtual ~CSyncObject();

  virtual int Lock() = 0;    // 1 once the object is held
  virtual int Unlock() = 0;  // 1 once it is released
};

class VKTCALC_API CCritSec : public CSyncObject {
 public:
  CCritSec();
  ~CCritSec() override;

  int Lock() override;    // waits until held; always 1
  int Unlock() override;  // only the holding thread may call it; always 1

 private:
  std::recursive_mutex m_mutex;
};

class VKTCALC_API CCritSecGuard {
 public:
  explicit CCritSecGuard(CCritSec* lock);  // null guards nothing
  explicit CCritSecGuard(CCritSec& lock) : CCritSecGuard(&lock) {}
  CCritSecGuard(const CCritSecGuard&) = delete;
  CCritSecGuard& operator=(const CCritSecGuard&) = delete;
  ~CCritSecGuard();

 private:
  CCritSec* m_pLock;  // held from construction to destruction; may be null
};
