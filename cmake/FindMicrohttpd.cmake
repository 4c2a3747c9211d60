# GNU libmicrohttpd, which brings no package file of its own for CMake.
#
#   Microhttpd::Microhttpd
find_path(MICROHTTPD_INCLUDE_DIR microhttpd.h)
find_library(MICROHTTPD_LIBRARY microhttpd)
mark_as_advanced(MICROHTTPD_INCLUDE_DIR MICROHTTPD_LIBRARY)

if(MICROHTTPD_INCLUDE_DIR)
  # 0x00097500 is 0.9.75
  file(STRINGS "${MICROHTTPD_INCLUDE_DIR}/microhttpd.h" line
       REGEX "^#define MHD_VERSION 0x[0-9A-Fa-f]+")
  if(line MATCHES "0x([0-9]+)([0-9][0-9])([0-9][0-9])([0-9][0-9])")
    set(MICROHTTPD_VERSION "${CMAKE_MATCH_1}.${CMAKE_MATCH_2}.${CMAKE_MATCH_3}")
    string(REGEX REPLACE "(^|\\.)0+([0-9])" "\\1\\2" MICROHTTPD_VERSION "${MICROHTTPD_VERSION}")
  endif()
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Microhttpd
  REQUIRED_VARS MICROHTTPD_LIBRARY MICROHTTPD_INCLUDE_DIR
  VERSION_VAR MICROHTTPD_VERSION)

if(Microhttpd_FOUND AND NOT TARGET Microhttpd::Microhttpd)
  add_library(Microhttpd::Microhttpd UNKNOWN IMPORTED)
  set_target_properties(Microhttpd::Microhttpd PROPERTIES
    IMPORTED_LOCATION "${MICROHTTPD_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${MICROHTTPD_INCLUDE_DIR}")
endif()
