# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO

# The shipped translations: readable UTF-8 sources in i18n/translations, the maker's UTF-16 files in the folder
# Languages beside the executable's folder, in the build tree as in the installation.
add_executable(StringsToUtf16 ${CMAKE_SOURCE_DIR}/i18n/tools/StringsToUtf16.cpp)
target_link_libraries(StringsToUtf16 PRIVATE Qt6::Core)
vardo_warnings(StringsToUtf16)

set(translations ${CMAKE_SOURCE_DIR}/i18n/translations)
set(languages ${CMAKE_BINARY_DIR}/Languages)
file(GLOB translation_sources CONFIGURE_DEPENDS RELATIVE ${translations} ${translations}/*/*.strings)
set(translation_files ${languages}/languages.xml)
add_custom_command(OUTPUT ${languages}/languages.xml DEPENDS ${translations}/languages.xml
  COMMAND ${CMAKE_COMMAND} -E copy ${translations}/languages.xml ${languages}/languages.xml VERBATIM)
foreach(file ${translation_sources})
  get_filename_component(code ${file} DIRECTORY)
  add_custom_command(OUTPUT ${languages}/${file} DEPENDS ${translations}/${file} StringsToUtf16
    COMMAND ${CMAKE_COMMAND} -E make_directory ${languages}/${code}
    COMMAND StringsToUtf16 ${translations}/${file} ${languages}/${file} VERBATIM)
  list(APPEND translation_files ${languages}/${file})
  install(FILES ${languages}/${file} DESTINATION Languages/${code})
endforeach()
install(FILES ${languages}/languages.xml DESTINATION Languages)
add_custom_target(translations ALL DEPENDS ${translation_files})

# Programs that ask for a language find the files.
add_dependencies(vardo_i18n translations)