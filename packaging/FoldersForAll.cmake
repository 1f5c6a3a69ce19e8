# SPDX-License-Identifier: MIT
# Run by CPack before it packs what was installed: its folders can be entered by all, whatever the umask of the one who
# builds the package.
file(CHMOD_RECURSE "${CPACK_TEMPORARY_INSTALL_DIRECTORY}" DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
