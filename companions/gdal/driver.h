/// The vector driver of GDAL for boundary files.
#pragma once

#include <cpl_port.h>

/// Registers the driver "Veldtrim" with GDAL, unless it is registered or was built for another
/// release of GDAL. GDAL calls this function of the plug-in by its name.
extern "C" CPL_DLL void RegisterOGRVeldtrim();
