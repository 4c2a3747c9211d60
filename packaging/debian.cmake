# The Debian packages: what only they hold, and their control files. The preview and the
# printer application are of their own: a print server needs neither of them nor their libraries.

set(KELP_DEBIAN_REVISION 1 CACHE STRING "Revision of the Debian package")
set(KELP_MAINTAINER "Kelp maintainers <maintainers@kelp.example>" CACHE STRING
  "Name and address in the Debian package")

# Not part of an install by hand.
set(debian_only COMPONENT debian EXCLUDE_FROM_ALL)
configure_file(debian/changelog.in "${packed}/changelog.Debian" @ONLY)
kelp_gzip("${packed}/changelog.Debian" "${packed}/changelog.Debian.gz")
list(APPEND generated "${packed}/changelog.Debian.gz")
install(FILES debian/copyright "${packed}/changelog.Debian.gz"
  DESTINATION "share/doc/${KELP_PACKAGE}" ${debian_only})
install(FILES debian/copyright "${packed}/changelog.Debian.gz"
  DESTINATION share/doc/kelp-preview COMPONENT preview-debian EXCLUDE_FROM_ALL)
install(FILES debian/copyright "${packed}/changelog.Debian.gz"
  DESTINATION share/doc/kelp-printer-app COMPONENT app-debian EXCLUDE_FROM_ALL)
install(FILES debian/lintian-overrides DESTINATION share/lintian/overrides
  RENAME "${KELP_PACKAGE}" ${debian_only})
install(FILES debian/preview-lintian-overrides DESTINATION share/lintian/overrides
  RENAME kelp-preview COMPONENT preview-debian EXCLUDE_FROM_ALL)
install(FILES debian/app-lintian-overrides DESTINATION share/lintian/overrides
  RENAME kelp-printer-app COMPONENT app-debian EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME "${KELP_PACKAGE}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "${KELP_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_COMPONENTS_ALL driver debian)
set(CPACK_COMPONENT_DRIVER_GROUP driver)
set(CPACK_COMPONENT_DEBIAN_GROUP driver)
if(KELP_BUILD_TOOLS)
  list(APPEND CPACK_COMPONENTS_ALL preview preview-debian)
  set(CPACK_COMPONENT_PREVIEW_GROUP preview)
  set(CPACK_COMPONENT_PREVIEW-DEBIAN_GROUP preview)
endif()
if(TARGET kelp-printer-app)
  list(APPEND CPACK_COMPONENTS_ALL app app-debian)
  set(CPACK_COMPONENT_APP_GROUP app)
  set(CPACK_COMPONENT_APP-DEBIAN_GROUP app)
endif()
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package's description begins with its own

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE "${KELP_DEBIAN_REVISION}")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# Libraries by what the programs were linked with.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

set(CPACK_DEBIAN_DRIVER_PACKAGE_NAME "${KELP_PACKAGE}")
set(CPACK_DEBIAN_DRIVER_PACKAGE_SECTION text)
# The way of a document to raster; without a spooler here nothing in the package does anything.
set(CPACK_DEBIAN_DRIVER_PACKAGE_DEPENDS "cups (>= 2.3), cups-filters, ghostscript")
# For the removal of snapshots.
set(CPACK_DEBIAN_DRIVER_PACKAGE_RECOMMENDS "systemd | systemd-standalone-tmpfiles")
set(CPACK_DEBIAN_DRIVER_PACKAGE_SUGGESTS "kelp-preview, kelp-printer-app")
set(CPACK_DEBIAN_DRIVER_PACKAGE_CONTROL_EXTRA
  "${CMAKE_CURRENT_SOURCE_DIR}/debian/postinst" "${CMAKE_CURRENT_SOURCE_DIR}/debian/postrm")
set(CPACK_DEBIAN_DRIVER_DESCRIPTION
"printer driver for ZPL thermal printers
Kelp prints from the CUPS spooler on label printers and tattoo stencil
printers that understand ZPL: heads of 2, 3 and 4 inches, and stencil
printers as wide as A5 and A4, all with 203 dots per inch.
.
It offers ten halftones, from a fixed threshold for sharp barcodes to error
diffusion for photographs, label sizes of any kind, and settings for media,
speed, darkness and what the printer does after a label.")

set(CPACK_DEBIAN_PREVIEW_PACKAGE_NAME kelp-preview)
set(CPACK_DEBIAN_PREVIEW_PACKAGE_SECTION text)
# For documents: the way that a queue goes.
set(CPACK_DEBIAN_PREVIEW_PACKAGE_RECOMMENDS "${KELP_PACKAGE}, cups, ghostscript")
set(CPACK_DEBIAN_PREVIEW_DESCRIPTION
"shows what a ZPL thermal printer will print
This program draws the labels of a printer's command stream, tells their
settings, compares two streams, shows a picture in every halftone of the
Kelp driver, and stands in for a label printer on the network. No printer
is needed.")

set(CPACK_DEBIAN_APP_PACKAGE_NAME kelp-printer-app)
set(CPACK_DEBIAN_APP_PACKAGE_SECTION text)
# PDF documents are drawn by it; everything else prints without.
set(CPACK_DEBIAN_APP_PACKAGE_RECOMMENDS ghostscript)
# To be found by those who print from other machines.
set(CPACK_DEBIAN_APP_PACKAGE_SUGGESTS "avahi-daemon, ${KELP_PACKAGE}")
set(CPACK_DEBIAN_APP_PACKAGE_CONTROL_EXTRA
  "${CMAKE_CURRENT_SOURCE_DIR}/debian/app/postinst"
  "${CMAKE_CURRENT_SOURCE_DIR}/debian/app/prerm"
  "${CMAKE_CURRENT_SOURCE_DIR}/debian/app/postrm")
set(CPACK_DEBIAN_APP_DESCRIPTION
"ZPL thermal printers as IPP printers
This server makes label printers and tattoo stencil printers that understand
ZPL into IPP printers, for whatever prints without drivers: phones, tablets,
and spoolers that know no PPD files. It needs no spooler itself.
.
It runs as a service for this machine alone until it is told to open the
printers to the network.")

include(CPack)
