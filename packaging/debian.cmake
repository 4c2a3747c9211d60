# The Debian package: what only it holds, and its control file.

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
install(FILES debian/lintian-overrides DESTINATION share/lintian/overrides
  RENAME "${KELP_PACKAGE}" ${debian_only})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME "${KELP_PACKAGE}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "${KELP_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_CMAKE_PROJECTS
  "${PROJECT_BINARY_DIR};${PROJECT_NAME};ALL;/"
  "${PROJECT_BINARY_DIR};${PROJECT_NAME};debian;/")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE "${KELP_DEBIAN_REVISION}")
set(CPACK_DEBIAN_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Libraries by what the programs were linked with. The rest is the way of a document to raster;
# without a spooler here nothing in the package does anything.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "cups (>= 2.3), cups-filters, ghostscript")
# For the removal of snapshots.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "systemd | systemd-standalone-tmpfiles")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
  "${CMAKE_CURRENT_SOURCE_DIR}/debian/postinst" "${CMAKE_CURRENT_SOURCE_DIR}/debian/postrm")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "printer driver for ZPL thermal printers")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Kelp prints from the CUPS spooler on label printers and tattoo stencil
printers that understand ZPL: heads of 2, 3 and 4 inches, and stencil
printers as wide as A5 and A4, all with 203 dots per inch.
.
It offers ten halftones, from a fixed threshold for sharp barcodes to error
diffusion for photographs, label sizes of any kind, and settings for media,
speed, darkness and what the printer does after a label.")

include(CPack)
