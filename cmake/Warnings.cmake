# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO

# Warnings are errors in our own code; the sanitizers chosen by a preset apply to it as well.
function(vardo_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor
                         -Woverloaded-virtual -Wconversion -Wsign-conversion -Wold-style-cast)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overlapping copies in std::string's own operator+ when it optimises (GCC bug 105651).
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  # Qt 6.4, the oldest that will do, lacks most successors of what newer ones deprecate.
  target_compile_definitions(${target} PRIVATE BOOST_BIND_GLOBAL_PLACEHOLDERS QT_WARN_DEPRECATED_UP_TO=0x060400)
endfunction()

if(VARDO_SANITIZE)
  add_compile_options(-fsanitize=${VARDO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${VARDO_SANITIZE})
endif()
