# SPDX-License-Identifier: MIT
# A folder may include only its own headers and those of the folders that it may link.
cmake_minimum_required(VERSION 3.25)
include("${ROOT}/cmake/CalvornTargets.cmake")

set(wrong "")
set(files_read 0)

# Checks that the file includes headers with this prefix only from the folders in "allowed".
macro(check_file file prefix)
    file(STRINGS "${file}" includes REGEX "^#include \"${prefix}[a-z]+/")
    foreach(line IN LISTS includes)
        string(REGEX REPLACE "^#include \"${prefix}([a-z]+)/.*" "\\1" from "${line}")
        if(line MATCHES "\"display/plot/")
            set(from plot)
        endif()
        if(NOT from IN_LIST allowed)
            list(APPEND wrong "${file}: ${line}")
        endif()
    endforeach()
endmacro()

foreach(folder translations platform protocol widgets core data analysis display instrument remote controls setup app
        server)
    set(allowed ${folder} ${CALVORN_MAY_LINK_${folder}})
    file(GLOB_RECURSE files "${ROOT}/${folder}/*.h" "${ROOT}/${folder}/*.cpp")
    foreach(file IN LISTS files)
        math(EXPR files_read "${files_read} + 1")
        check_file("${file}" "")
    endforeach()
endforeach()

# Checks the folders inside server/ likewise, as server/README.md states. Among the drivers only the openers know the
# boards.
set(inside_synthesiser synthesiser)
set(inside_links links)
set(inside_boards boards links synthesiser)
set(inside_drivers drivers links synthesiser)
foreach(folder synthesiser links boards drivers)
    file(GLOB files "${ROOT}/server/${folder}/*.h" "${ROOT}/server/${folder}/*.cpp")
    foreach(file IN LISTS files)
        set(allowed ${inside_${folder}})
        if(file MATCHES "/drivers/[a-z]+_opener\\.(h|cpp)$")
            list(APPEND allowed boards)
        endif()
        check_file("${file}" "server/")
    endforeach()
endforeach()

# The plot is painted without widgets, so it includes nothing from the windows above it.
file(GLOB files "${ROOT}/display/plot/*.h" "${ROOT}/display/plot/*.cpp")
foreach(file IN LISTS files)
    file(STRINGS "${file}" includes REGEX "^#include (\"display/[a-z_]+\\.h\"|<QWidget>|<QApplication>)")
    if(includes)
        list(APPEND wrong "${file}: ${includes}")
    endif()
endforeach()

if(files_read LESS 50)
    message(FATAL_ERROR "only ${files_read} files found under ${ROOT}")
endif()
if(wrong)
    list(JOIN wrong "\n" text)
    message(FATAL_ERROR "Headers from a folder that may not be linked:\n${text}")
endif()
message(STATUS "${files_read} files include only what they may")
