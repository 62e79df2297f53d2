# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO

# The installation: one folder, which may lie anywhere, with bin/, share/ and Languages/ in it (the last one
# from cmake/Translations.cmake).
#
# The address of the maker's site is the packager's to give. Without it the installed program asks nobody: the list
# has no address to be fetched from, and the program does not look for a newer version of itself.
set(VARDO_UPDATE_SITE "" CACHE STRING "The maker's site, e.g. http://updates.example.com/; empty for none")

option(VARDO_SELF_UPDATE "Whether the installed program replaces itself by newer ones that the maker's site offers" ON)
option(VARDO_UNSIGNED_SELF_UPDATE "Whether it may do so without the maker's public key" OFF)
set(VARDO_PUBLIC_KEY "" CACHE FILEPATH "The maker's public key: no installer is then started that it does not vouch for")
set(VARDO_CATALOGUE_KEY "" CACHE FILEPATH "The maker's public key for the files that the site publishes")
set(VARDO_LIST "" CACHE FILEPATH "The maker's newest product list; without it a short one, older than every other")

if(VARDO_UPDATE_SITE AND VARDO_SELF_UPDATE AND NOT VARDO_PUBLIC_KEY AND NOT VARDO_UNSIGNED_SELF_UPDATE)
  message(FATAL_ERROR "Without the maker's key every server that answers for ${VARDO_UPDATE_SITE} could start any program on "
    "the users' computers. Choose one: -DVARDO_PUBLIC_KEY=FILE (only installers that the maker has signed are started, see "
    "docs/signing.md), -DVARDO_SELF_UPDATE=OFF (the program never replaces itself), or "
    "-DVARDO_UNSIGNED_SELF_UPDATE=ON (it does, and trusts the network)")
endif()

# The installation would give a secret key to everybody, and with anything but public keys in the file no newer version
# ever starts.
foreach(key IN LISTS VARDO_PUBLIC_KEY VARDO_CATALOGUE_KEY)
  file(READ "${key}" text)
  string(REGEX REPLACE "untrusted comment:[^\n]*\nRW[A-Za-z0-9+/]+\r?(\n|$)" "" rest "${text}")
  string(REGEX MATCHALL "\nRW[A-Za-z0-9+/]+" values "${text}")
  foreach(value IN LISTS values)
    string(LENGTH "${value}" length)
    if(NOT length EQUAL 57)
      set(rest "${value}")
    endif()
  endforeach()
  if(NOT rest STREQUAL "" OR values STREQUAL "")
    message(FATAL_ERROR "${key} does not hold public keys of minisign alone; give the .pub file, see docs/signing.md")
  endif()
endforeach()

if(VARDO_UPDATE_SITE AND NOT VARDO_UPDATE_SITE MATCHES "^http://[^/<>&\"?# ]+(/[^<>&\"?# ]*)?$")
  message(FATAL_ERROR "${VARDO_UPDATE_SITE} is no address with http://, a host and a folder; programs fetch from no other")
endif()

set(VARDO_PRODUCT_LIST "")
set(VARDO_NO_UPDATES " NoUpdates=\"true\"")
if(VARDO_UPDATE_SITE)
  string(REGEX REPLACE "/+$" "" VARDO_UPDATE_SITE "${VARDO_UPDATE_SITE}")
  string(APPEND VARDO_UPDATE_SITE "/")
  set(VARDO_PRODUCT_LIST "${VARDO_UPDATE_SITE}products.xml")
  if(VARDO_SELF_UPDATE)
    set(VARDO_NO_UPDATES "")
  endif()
endif()
foreach(file products.xml VardoProductUpdate.xml)
  configure_file(${CMAKE_SOURCE_DIR}/packaging/share/${file}.in ${CMAKE_BINARY_DIR}/packaging/share/${file} @ONLY)
endforeach()
if(VARDO_LIST)
  file(READ "${VARDO_LIST}" text)
  if(NOT text MATCHES "<Products[^>]*[ \t\r\n]Version=[\"'][0-9]" OR NOT text MATCHES "<Products[^>]*[ \t\r\n]Url=[\"']http://")
    message(FATAL_ERROR "${VARDO_LIST} is no product list with a Version and a Url, so programs would refresh nothing; see "
      "docs/formats.md")
  endif()
  configure_file("${VARDO_LIST}" ${CMAKE_BINARY_DIR}/packaging/share/products.xml COPYONLY)
endif()

install(TARGETS VARDOProductUpdate VARDOCatalogCheck VARDOCatalogSign VARDOCatalogRelease VARDOUpdateReport RUNTIME DESTINATION bin)
install(DIRECTORY ${CMAKE_BINARY_DIR}/packaging/share/ DESTINATION share)
if(VARDO_PUBLIC_KEY)
  install(FILES ${VARDO_PUBLIC_KEY} DESTINATION share RENAME VardoProductUpdate.pub)
endif()
if(VARDO_CATALOGUE_KEY)
  install(FILES ${VARDO_CATALOGUE_KEY} DESTINATION share RENAME VardoCatalogue.pub)
endif()

# All that an installation holds, and nothing else: what scripts/run.sh builds.
add_custom_target(program DEPENDS VARDOProductUpdate VARDOCatalogCheck VARDOCatalogSign VARDOCatalogRelease VARDOUpdateReport)
