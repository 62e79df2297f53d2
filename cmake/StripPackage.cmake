# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO

# CPack runs this on the files that it is about to pack: programs lose their symbols, and notes that nobody reads.
file(GLOB programs ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${CPACK_VARDO_PROGRAMS}/*)
execute_process(COMMAND strip --remove-section=.comment --remove-section=.note ${programs} COMMAND_ERROR_IS_FATAL ANY)
