# SPDX-License-Identifier: MIT
# Read by CPack for each kind of package: which of the two layouts goes into it, and below which folder.
list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build)
if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_INSTALL_CMAKE_PROJECTS "${build};Calvorn;system;/")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
else()
    set(CPACK_INSTALL_CMAKE_PROJECTS "${build};Calvorn;portable;/")
endif()
