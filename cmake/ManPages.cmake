# Builds the man pages from Markdown if pandoc and gzip are found.
find_program(VELDTRIM_PANDOC pandoc DOC "pandoc, for the man pages")
find_program(VELDTRIM_GZIP gzip DOC "gzip, for the man pages")
mark_as_advanced(VELDTRIM_PANDOC VELDTRIM_GZIP)
if(NOT VELDTRIM_PANDOC OR NOT VELDTRIM_GZIP)
  message(STATUS "pandoc or gzip not found: the man pages are not built")
  return()
endif()

include(GNUInstallDirs)

function(veldtrim_add_man_page name component)
  set(source "${PROJECT_SOURCE_DIR}/docs/man/${name}.1.md")
  set(page "${PROJECT_BINARY_DIR}/man/${name}.1.gz")
  add_custom_command(OUTPUT "${page}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${PROJECT_BINARY_DIR}/man"
    COMMAND "${VELDTRIM_PANDOC}" --standalone --from markdown-smart --to man
      --variable "footer=Veldtrim ${PROJECT_VERSION}"
      --output "${PROJECT_BINARY_DIR}/man/${name}.1" "${source}"
    # -n omits name and time, so that the same source gives the same bytes.
    COMMAND "${VELDTRIM_GZIP}" -9nf "${PROJECT_BINARY_DIR}/man/${name}.1"
    DEPENDS "${source}"
    VERBATIM)
  add_custom_target(man_${name} ALL DEPENDS "${page}")
  install(FILES "${page}" DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
endfunction()

veldtrim_add_man_page(Veldtrim Runtime)
if(TARGET veldtrim-inspect)
  veldtrim_add_man_page(veldtrim-inspect Inspect)
endif()
if(TARGET veldtrim-boundary)
  veldtrim_add_man_page(veldtrim-boundary Boundary)
endif()
if(TARGET veldtrim-tiles)
  veldtrim_add_man_page(veldtrim-tiles Tiles)
endif()
