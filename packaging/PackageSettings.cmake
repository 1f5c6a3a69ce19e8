# SPDX-License-Identifier: MIT
# CPack reads this for each archive. The source goes in without CMake's own component rules.
if(CPACK_SOURCE_INSTALLED_DIRECTORIES)
    set(CPACK_INSTALL_CMAKE_PROJECTS "")
    set(CPACK_STRIP_FILES OFF)
endif()
