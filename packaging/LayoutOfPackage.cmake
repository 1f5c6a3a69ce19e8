# SPDX-License-Identifier: MIT
# Read by CPack for each kind of package: which of the two layouts goes into it, and below which folder.
list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build)
if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_INSTALL_CMAKE_PROJECTS "${build};Calvorn;system;/")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    # Without it CPack makes a package that names no libraries, and says so only in passing.
    find_program(CALVORN_SHLIBDEPS dpkg-shlibdeps)
    if(NOT CALVORN_SHLIBDEPS)
        message(FATAL_ERROR "The .deb needs dpkg-shlibdeps to name the libraries: install dpkg-dev.")
    endif()
else()
    set(CPACK_INSTALL_CMAKE_PROJECTS "${build};Calvorn;portable;/")
endif()
