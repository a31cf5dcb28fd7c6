// platform/Sync.cpp: critical sections on the standard library's recursive
// mutex, so that a thread may re-enter a lock it holds, as a critical section
// allows. Lock ordering is the callers' affair: the library never holds two.
#include "platform/Sync.h"

CSyncObject::~CSyncObject() = default;

CCritSec::CCritSec() = default;

CCritSec::~CCritSec() = default;

int CCritSec::Lock() {
  m_mutex.lock();
  return 1;
}

int CCritSec::Unlock() {
  m_mutex.unlock();
  return 1;
}

CCritSecGuard::CCritSecGuard(CCritSec* lock) : m_pLock(lock) {
  if (m_pLock != nullptr) m_pLock->Lock();
}

CCritSecGuard::~CCritSecGuard() {
  if (m_pLock != nullptr) m_pLock->Unlock();
}
