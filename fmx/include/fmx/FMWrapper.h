// Host interface: everything a plug-in includes.
#pragma once

#include "fmx/FMXBinaryData.h"
#include "fmx/FMXCalcEngine.h"
#include "fmx/FMXData.h"
#include "fmx/FMXExtern.h"
#include "fmx/FMXFixPt.h"
#include "fmx/FMXText.h"
#include "fmx/FMXTypes.h"
