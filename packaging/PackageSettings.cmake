# SPDX-License-Identifier: MIT
# Read by CPack for each archive. The source archive must not use CMake's component rules.
if(CPACK_SOURCE_INSTALLED_DIRECTORIES)
    set(CPACK_INSTALL_CMAKE_PROJECTS "")
    set(CPACK_STRIP_FILES OFF)
endif()
