# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO

# The Debian package, which scripts/package.sh makes: the installation of cmake/Install.cmake below one folder, and what
# ties it to a desktop. The latter is the component "desktop", whose paths are relative to the root of the system; no
# other installation has it. Its files are made by the target desktop_files.
set(VARDO_PREFIX /opt/vardo/product-update)
set(VARDO_RELEASE_DATE 2026-11-25)
set(VARDO_MAINTAINER "VARDO Technologies <packages@vardo-technologies.com>" CACHE STRING
  "Who answers for the package, as NAME <ADDRESS>")

find_program(RSVG_CONVERT rsvg-convert)
find_program(GZIP gzip)
if(NOT RSVG_CONVERT OR NOT GZIP)
  return()
endif()

set(CPACK_PACKAGE_NAME vardo-product-update)
set(VARDO_DOCUMENTS /usr/share/doc/${CPACK_PACKAGE_NAME})
set(sources ${CMAKE_SOURCE_DIR}/packaging)
set(made ${CMAKE_BINARY_DIR}/packaging)
set(desktop_files "")

# Installs files below a folder of the system.
function(vardo_desktop_install destination)
  install(FILES ${ARGN} DESTINATION ${destination} COMPONENT desktop EXCLUDE_FROM_ALL)
endfunction()

# Compresses a file without its name and date, so that equal files give equal packages.
function(vardo_gzip file compressed)
  add_custom_command(OUTPUT ${compressed} DEPENDS ${file} COMMAND ${GZIP} -9nc ${file} > ${compressed} VERBATIM)
  set(desktop_files ${desktop_files} ${compressed} PARENT_SCOPE)
endfunction()

# The menu's entry, the entry that runs the silent check at login, and what software centres show.
configure_file(${sources}/desktop/vardo-product-update.desktop.in ${made}/applications/vardo-product-update.desktop @ONLY)
configure_file(${sources}/desktop/autostart.desktop.in ${made}/autostart/vardo-product-update.desktop @ONLY)
set(metainfo ${made}/com.vardo_technologies.product_update.metainfo.xml)
configure_file(${sources}/desktop/metainfo.xml.in ${metainfo} @ONLY)
vardo_desktop_install(usr/share/applications ${made}/applications/vardo-product-update.desktop)
vardo_desktop_install(etc/xdg/autostart ${made}/autostart/vardo-product-update.desktop)
vardo_desktop_install(usr/share/metainfo ${metainfo})

# The timer that runs the silent check in long sessions, for each user's service manager, which starts it without being
# told. Both links are relative, as Debian wants them.
set(units usr/lib/systemd/user)
foreach(unit timer service)
  configure_file(${sources}/systemd/vardo-product-update.${unit}.in ${made}/systemd/vardo-product-update.${unit} @ONLY)
  vardo_desktop_install(${units} ${made}/systemd/vardo-product-update.${unit})
endforeach()
file(CREATE_LINK ../vardo-product-update.timer ${made}/systemd/wants.timer SYMBOLIC)
foreach(target timers graphical-session)
  install(FILES ${made}/systemd/wants.timer DESTINATION ${units}/${target}.target.wants COMPONENT desktop
    RENAME vardo-product-update.timer EXCLUDE_FROM_ALL)
endforeach()

# The icon, from its drawing; where few pixels are to be had, from a plainer one.
foreach(size 16 22 24 32 48 64 128 256)
  set(drawing ${CMAKE_SOURCE_DIR}/resources/images/update.svg)
  if(size LESS 32)
    set(drawing ${sources}/icons/update-small.svg)
  endif()
  set(icon ${made}/icons/${size}/vardo-product-update.png)
  add_custom_command(OUTPUT ${icon} DEPENDS ${drawing}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${made}/icons/${size}
    COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} ${drawing} -o ${icon} VERBATIM)
  list(APPEND desktop_files ${icon})
  vardo_desktop_install(usr/share/icons/hicolor/${size}x${size}/apps ${icon})
endforeach()
configure_file(${CMAKE_SOURCE_DIR}/resources/images/update.svg ${made}/icons/vardo-product-update.svg COPYONLY)
vardo_desktop_install(usr/share/icons/hicolor/scalable/apps ${made}/icons/vardo-product-update.svg)

# Each program's name on the command line, and its manual page under both names.
foreach(names VARDOProductUpdate=vardo-product-update VARDOUpdateReport=vardo-update-report
        VARDOCatalogCheck=vardo-catalog-check VARDOCatalogSign=vardo-catalog-sign VARDOCatalogRelease=vardo-catalog-release)
  string(REPLACE "=" ";" names ${names})
  list(GET names 0 program)
  list(GET names 1 command)
  file(MAKE_DIRECTORY ${made}/bin)
  file(CREATE_LINK ${VARDO_PREFIX}/bin/${program} ${made}/bin/${command} SYMBOLIC)
  configure_file(${sources}/man/${program}.1.in ${made}/man/${command}.1 @ONLY)
  vardo_gzip(${made}/man/${command}.1 ${made}/man/${command}.1.gz)
  file(CREATE_LINK ${command}.1.gz ${made}/man/${program}.1.gz SYMBOLIC)
  vardo_desktop_install(usr/bin ${made}/bin/${command})
  vardo_desktop_install(usr/share/man/man1 ${made}/man/${command}.1.gz ${made}/man/${program}.1.gz)
endforeach()

# The page about the settings.
set(page vardo-product-update.conf.5)
configure_file(${sources}/man/${page}.in ${made}/man/${page} @ONLY)
vardo_gzip(${made}/man/${page} ${made}/man/${page}.gz)
vardo_desktop_install(usr/share/man/man5 ${made}/man/${page}.gz)

# What a Debian package tells of itself.
vardo_gzip(${sources}/debian/changelog ${made}/changelog.gz)
file(RELATIVE_PATH documents / ${VARDO_DOCUMENTS})
vardo_desktop_install(${documents} ${sources}/debian/copyright ${made}/changelog.gz)
foreach(document administration checking fleets formats packaging publishing settings signing)
  vardo_desktop_install(${documents} ${CMAKE_SOURCE_DIR}/docs/${document}.md)
endforeach()
vardo_desktop_install(${documents} ${CMAKE_SOURCE_DIR}/docs/report.schema.json)
install(FILES ${sources}/debian/lintian-overrides DESTINATION usr/share/lintian/overrides COMPONENT desktop
  RENAME ${CPACK_PACKAGE_NAME} EXCLUDE_FROM_ALL)
file(COPY ${sources}/debian/conffiles DESTINATION ${made}/control
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
configure_file(${sources}/debian/postrm ${made}/control/postrm @ONLY FILE_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

add_custom_target(desktop_files DEPENDS ${desktop_files})
add_custom_target(packaged DEPENDS program translations desktop_files)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VERSION ${VARDO_VERSION})
set(CPACK_PACKAGE_VENDOR "VARDO Technologies")
set(CPACK_PACKAGE_CONTACT "${VARDO_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "tells whether the VARDO software here is up to date")
file(READ ${sources}/debian/description CPACK_PACKAGE_DESCRIPTION)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${sources}/debian/description)
set(CPACK_PACKAGING_INSTALL_PREFIX /)
set(CPACK_INSTALL_CMAKE_PROJECTS
  "${CMAKE_BINARY_DIR};${PROJECT_NAME};Unspecified;${VARDO_PREFIX};${CMAKE_BINARY_DIR};${PROJECT_NAME};desktop;/")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
  WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/StripPackage.cmake)
set(CPACK_VARDO_PROGRAMS ${VARDO_PREFIX}/bin)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Beyond the libraries: the window on a Wayland desktop without X11, the launcher of last resort for web pages, the
# letters of the languages that the program speaks, and the tool with which the maker signs.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "fonts-noto-core, fonts-noto-cjk, minisign")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${made}/control/conffiles ${made}/control/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
