# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO

# A room is a folder of sources that becomes one static library, vardo_<name>. Its headers are included as
# "<folder>/<Class>.h", and only by a room that names it in DEPENDS: every room's include folder holds links to that
# room's own headers alone, so an include in the wrong direction does not compile.
#
#   vardo_room(<name> [FOLDER <folder>] [DEPENDS <room or library>...] [EXCLUDE <file>...])
function(vardo_room name)
  cmake_parse_arguments(ROOM "" "FOLDER" "DEPENDS;EXCLUDE" ${ARGN})
  if(NOT ROOM_FOLDER)
    set(ROOM_FOLDER ${name})
  endif()
  set(folder ${CMAKE_SOURCE_DIR}/${ROOM_FOLDER})
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h ${folder}/*.ui)
  foreach(excluded ${ROOM_EXCLUDE})
    list(REMOVE_ITEM sources ${folder}/${excluded})
  endforeach()

  # A link to the folder would open the rooms in its subfolders, too.
  set(door ${CMAKE_BINARY_DIR}/rooms/${name})
  file(REMOVE_RECURSE ${door})
  file(MAKE_DIRECTORY ${door}/${ROOM_FOLDER})
  file(GLOB headers CONFIGURE_DEPENDS RELATIVE ${folder} ${folder}/*.h)
  foreach(header ${headers})
    file(CREATE_LINK ${folder}/${header} ${door}/${ROOM_FOLDER}/${header} SYMBOLIC)
  endforeach()

  add_library(vardo_${name} STATIC ${sources})
  target_include_directories(vardo_${name} PUBLIC ${door})
  if(sources MATCHES "\\.ui")
    # The form class of a widget that derives from it is part of the widget's header.
    target_include_directories(vardo_${name} PUBLIC ${CMAKE_CURRENT_BINARY_DIR}/vardo_${name}_autogen/include)
  endif()
  vardo_warnings(vardo_${name})
  list(TRANSFORM ROOM_DEPENDS REPLACE "^([a-z0-9]+)$" "vardo_\\1")
  target_link_libraries(vardo_${name} PUBLIC ${ROOM_DEPENDS})
  vardo_check_headers(${name} ${ROOM_FOLDER})
endfunction()

# Adds the room's headers to the target check-headers, which compiles each of them alone.
function(vardo_check_headers name folder)
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.h)
  set(units "")
  foreach(header ${headers})
    get_filename_component(base ${header} NAME)
    set(unit ${CMAKE_BINARY_DIR}/check-headers/${folder}/${base}.cpp)
    file(GENERATE OUTPUT ${unit} CONTENT "#include \"${folder}/${base}\"\n")
    list(APPEND units ${unit})
  endforeach()
  add_library(check-headers-${name} OBJECT EXCLUDE_FROM_ALL ${units})
  set_target_properties(check-headers-${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_link_libraries(check-headers-${name} PRIVATE vardo_${name})
  vardo_warnings(check-headers-${name})
  if(NOT TARGET check-headers)
    add_custom_target(check-headers)
  endif()
  add_dependencies(check-headers check-headers-${name})
endfunction()
