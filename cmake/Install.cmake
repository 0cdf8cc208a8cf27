# Installation, by component: Runtime (the program), Inspect (veldtrim-inspect), Boundary
# (veldtrim-boundary), Tiles (veldtrim-tiles), Gdal (the driver for GDAL), Library (the shared XML library), Development
# (headers, link libraries, package files).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS Veldtrim DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime)
if(VELDTRIM_XML_SHARED)
  file(RELATIVE_PATH to_library
    "/${CMAKE_INSTALL_FULL_BINDIR}" "/${CMAKE_INSTALL_FULL_LIBDIR}")
  set_target_properties(Veldtrim PROPERTIES INSTALL_RPATH "$ORIGIN/${to_library}")
endif()

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Veldtrim)
foreach(library IN ITEMS veldtrim_xml veldtrim_xml_other)
  if(NOT TARGET ${library})
    continue()
  endif()
  get_target_property(type ${library} TYPE)
  string(REPLACE _LIBRARY "" form ${type})
  string(TOLOWER ${form} form)
  install(TARGETS ${library} EXPORT Veldtrim-${form}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Library
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Library
      NAMELINK_COMPONENT Development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  install(EXPORT Veldtrim-${form} NAMESPACE Veldtrim:: FILE Veldtrim-${form}.cmake
    DESTINATION ${package_dir} COMPONENT Development)
endforeach()

install(DIRECTORY src/xml/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development
  FILES_MATCHING PATTERN "*.h")

configure_package_config_file(cmake/package/VeldtrimConfig.cmake.in
  "${PROJECT_BINARY_DIR}/VeldtrimConfig.cmake" INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file("${PROJECT_BINARY_DIR}/VeldtrimConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/VeldtrimConfig.cmake"
    "${PROJECT_BINARY_DIR}/VeldtrimConfigVersion.cmake"
  DESTINATION ${package_dir} COMPONENT Development)

# The prefix is relative to the location of the file, so that an installed tree can be moved.
file(RELATIVE_PATH pc_to_prefix
  "/${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "/${CMAKE_INSTALL_PREFIX}")
configure_file(cmake/package/veldtrim-xml.pc.in "${PROJECT_BINARY_DIR}/veldtrim-xml.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/veldtrim-xml.pc"
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)

if(TARGET veldtrim-inspect)
  install(TARGETS veldtrim-inspect DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Inspect)
endif()

if(TARGET veldtrim-boundary)
  install(TARGETS veldtrim-boundary DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Boundary)
endif()

if(TARGET veldtrim-tiles)
  install(TARGETS veldtrim-tiles DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Tiles)
endif()

# GDAL looks for plug-ins beside its library, which on Debian is in a folder of the architecture. It
# would look into a folder named like its version instead, and miss all others, if one existed.
if(TARGET ogr_Veldtrim)
  get_target_property(gdal_library GDAL::GDAL LOCATION)
  cmake_path(GET gdal_library PARENT_PATH gdal_folder)
  if(gdal_folder MATCHES "^/usr/(lib.*)")
    set(plugin_folder ${CMAKE_MATCH_1}/gdalplugins)
  else()
    set(plugin_folder ${CMAKE_INSTALL_LIBDIR}/gdalplugins)
  endif()
  install(TARGETS ogr_Veldtrim LIBRARY DESTINATION ${plugin_folder} COMPONENT Gdal)
endif()

include(cmake/Packages.cmake)
