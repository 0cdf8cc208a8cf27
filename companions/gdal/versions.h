/// What differs between the releases of GDAL since 3.6.
#pragma once

#include <gdal_version.h>
#include <ogr_feature.h>
#include <ogr_spatialref.h>

namespace veldtrim {

/// Stands for the `const` that queries of layers and data sets, and what they return, have since
/// GDAL 3.12.
#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 12, 0)
#define VELDTRIM_GDAL_CONST const
#else
#define VELDTRIM_GDAL_CONST
#endif

/// What GDALDataset::ICreateLayer receives of the coordinate system and the geometry, and
/// OGRLayer::CreateField of the field.
#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 9, 0)
#define VELDTRIM_GDAL_GEOMETRY_FIELDS 1
using FieldToCreate = const OGRFieldDefn*;
#elif GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 8, 0)
using SystemOfLayer = const OGRSpatialReference*;
using FieldToCreate = OGRFieldDefn*;
#else
using SystemOfLayer = OGRSpatialReference*;
using FieldToCreate = OGRFieldDefn*;
#endif

} // namespace veldtrim
