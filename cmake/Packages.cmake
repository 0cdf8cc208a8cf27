# Debian packages, one per component: run `cpack -G DEB` in the build directory.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME veldtrim)
set(CPACK_PACKAGE_VENDOR "Veldtrim")
# CPack puts any summary but its default before those of the packages.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${CMAKE_PROJECT_NAME} built using CMake")
set(CPACK_PACKAGE_CONTACT "Veldtrim developers <developers@veldtrim.invalid>" CACHE STRING
  "Name and mail address of the maintainer of the packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# By default the program contains its own copy of the XML library, so its package needs no other.
set(CPACK_COMPONENTS_ALL Runtime Development)

function(veldtrim_describe_package component name section summary description)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
  # The Debian policy requires these two files in every package.
  set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/${name})
  install(FILES packaging/copyright DESTINATION ${doc_dir} COMPONENT ${component})
  if(VELDTRIM_GZIP)
    install(FILES "${PROJECT_BINARY_DIR}/changelog.gz" DESTINATION ${doc_dir}
      COMPONENT ${component} RENAME changelog.Debian.gz)
  endif()
endfunction()

if(VELDTRIM_GZIP)
  configure_file(packaging/changelog.in "${PROJECT_BINARY_DIR}/changelog" @ONLY)
  execute_process(COMMAND "${VELDTRIM_GZIP}" -9nkf "${PROJECT_BINARY_DIR}/changelog")
endif()

veldtrim_describe_package(Runtime veldtrim science
  "Clip elevation points to the polygons of a model area"
  "Reads text files of elevation points and a boundary file with polygons. For\neach file it writes the records inside a polygon or on its boundary, unchanged.")
veldtrim_describe_package(Development libveldtrim-xml-dev libdevel
  "XML documents with path queries, development files"
  "The headers and the static library of Veldtrim's XML reader, with a CMake\npackage and a pkg-config file.")
set(abi ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
if(VELDTRIM_XML_SHARED OR VELDTRIM_XML_BOTH)
  list(APPEND CPACK_COMPONENTS_ALL Library)
  veldtrim_describe_package(Library libveldtrim-xml${abi} libs
    "XML documents with path queries, shared library"
    "The shared library of Veldtrim's XML reader, for programs that use it.")
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/triggers")
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libveldtrim-xml${abi} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
endif()
if(TARGET veldtrim-inspect)
  list(APPEND CPACK_COMPONENTS_ALL Inspect)
  veldtrim_describe_package(Inspect veldtrim-inspect science
    "Explain what clipping elevation points keeps and drops"
    "Shows, for each file and each polygon, what a run of Veldtrim would keep, what\nit would drop, and why: as text, as JSON and as a picture.")
endif()
if(TARGET veldtrim-boundary)
  list(APPEND CPACK_COMPONENTS_ALL Boundary)
  veldtrim_describe_package(Boundary veldtrim-boundary science
    "Convert between GeoJSON and boundary files of Veldtrim"
    "Makes a boundary file for Veldtrim from the polygons of a GeoJSON file, as a GIS\nsaves them, and GeoJSON from a boundary file.")
endif()
if(TARGET ogr_Veldtrim)
  list(APPEND CPACK_COMPONENTS_ALL Gdal)
  veldtrim_describe_package(Gdal veldtrim-gdal science
    "Boundary files of Veldtrim in GDAL and QGIS"
    "A driver with which the programs of GDAL and QGIS open boundary files of\nVeldtrim, and with which ogr2ogr writes them.")
endif()
if(TARGET veldtrim-tiles)
  list(APPEND CPACK_COMPONENTS_ALL Tiles)
  veldtrim_describe_package(Tiles veldtrim-tiles science
    "Clip elevation points with all processors or a cluster"
    "Does what a run of Veldtrim does in several processes, with the same result:\nwith GNU parallel on one machine, with Slurm on a cluster, or in steps for\nother engines.")
  set(CPACK_DEBIAN_TILES_PACKAGE_DEPENDS "veldtrim (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
  set(CPACK_DEBIAN_TILES_PACKAGE_RECOMMENDS parallel)
  set(CPACK_DEBIAN_TILES_PACKAGE_SUGGESTS slurm-client)
endif()

include(CPack)
