// VKTCalc.h: the one header a host includes. It declares the whole public
// interface of the library: the platform types the interfaces show, the
// foundation classes and streams, the plain exports and settings, and the
// exported classes.
#pragma once

#include "VKTCalcExport.h"

#include "platform/Types.h"
#include "platform/CString.h"
#include "platform/Arrays.h"
#include "platform/Maps.h"
#include "platform/DateTime.h"
#include "platform/Geometry.h"
#include "platform/Sync.h"

#include "foundation/CMem.h"
#include "foundation/CBuffer.h"
#include "foundation/CWriter.h"
#include "foundation/CStringBuilder.h"
#include "foundation/CGlobalInfo.h"
#include "foundation/CStrKit.h"
#include "foundation/StreamIO.h"

#include "VKTCalcEntry.h"
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "ICalcTreeNode.h"
#include "CErrorCollector.h"
#include "CRowCol.h"
#include "CCellname.h"
#include "CStringPool.h"
#include "CUIntsArray.h"
#include "CTextCache.h"
#include "CProperty2.h"
#include "CFuncMnger.h"
#include "CFuncItem.h"
#include "CTraceCollector.h"
#include "ICalc.h"
