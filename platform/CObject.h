// platform/CObject.h: CObject, the common base of the framework's containers
// and of the objects that hosts keep in them.
//
// It carries only a virtual destructor, so that an owner holding CObject*
// (an object map, an owning pointer array) can delete what it holds. Copying
// is protected: a derived class may be a value, but nobody slices one into a
// bare CObject. Installed with the public headers.
#pragma once

#include "VKTCalcExport.h"

class VKTCALC_API CObject {
 public:
  virtual ~CObject();

 protected:
  CObject() noexcept = default;
  CObject(const CObject&) noexcept = default;
  CObject(CObject&&) noexcept = default;
  CObject& operator=(const CObject&) noexcept = default;
  CObject& operator=(CObject&&) noexcept = default;
};
