# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# What every target of the project has in common. All settings go on targets.

find_package(Qt${KORVASYNC_QT} REQUIRED COMPONENTS Core DBus)
find_package(PkgConfig REQUIRED)

function(korvasync_target_settings target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wconversion)
    if(KORVASYNC_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    set_target_properties(${target} PROPERTIES
        AUTOMOC ON
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON)
endfunction()

# Where files are compiled in bundles, a bundle holds files of one folder: its objects then tell
# which folder uses which.
function(korvasync_bundle_by_folder target)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        cmake_path(GET source PARENT_PATH folder)
        if(folder STREQUAL "")
            set(folder 0)
        endif()
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${folder})
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()
