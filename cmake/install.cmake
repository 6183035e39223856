# What an installation holds: the libraries, their headers, the program, and how other builds find them. Everything is
# relative to the prefix, so an installed tree can be moved.

include(CMakePackageConfigHelpers)
set(PXLCC_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/pxlcc)

install(TARGETS pxlcc pxlcore EXPORT pxlcc-targets)
if(PXLCC_ADD_STATIC)
    install(TARGETS pxlcc_static pxlcore_static EXPORT pxlcc-targets)
endif()
install(FILES include/pxlcc.h include/pxlcore.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/pxlcc DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# Libraries and program find what they need from where they stand, so that an installed tree can be moved.
if(PXLCC_RELOCATABLE)
    set_target_properties(pxlcc pxlcore PROPERTIES INSTALL_RPATH "$ORIGIN")
endif()
if(TARGET pxlcc_tool)
    file(RELATIVE_PATH toLibraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    if(PXLCC_RELOCATABLE)
        set_target_properties(pxlcc_tool PROPERTIES
                              INSTALL_RPATH "$ORIGIN/${toLibraries};$ORIGIN/${toLibraries}/pxlcc")
        set_target_properties(pxlcc_every_target PROPERTIES INSTALL_RPATH "$ORIGIN/..")
    else()
        set_target_properties(pxlcc_tool PROPERTIES INSTALL_RPATH ${CMAKE_INSTALL_FULL_LIBDIR}/pxlcc)
    endif()
    install(TARGETS pxlcc_tool)
    install(TARGETS pxlcc_every_target LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/pxlcc)
    set(pages ${PROJECT_BINARY_DIR}/tools/man)
    install(DIRECTORY ${pages}/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 FILES_MATCHING PATTERN "*.1")
    install(FILES ${pages}/pxlcc.3 DESTINATION ${CMAKE_INSTALL_MANDIR}/man3)
    install(FILES ${pages}/pxlcc.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME pxlcc)
    # where Debian's zsh looks, for packages and for what is installed by hand
    set(zshFolder site-functions)
    if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
        set(zshFolder vendor-completions)
    endif()
    install(FILES ${pages}/_pxlcc DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/${zshFolder})
endif()

if(NOT PXLCC_RELOCATABLE)
    foreach(binding pxlcc_python pxlcc_gstreamer)
        if(TARGET ${binding})
            set_target_properties(${binding} PROPERTIES INSTALL_RPATH "")
        endif()
    endforeach()
endif()

# For CMake: find_package(pxlcc), then link pxlcc::pxlcc or pxlcc::pxlcore; pxlcc::pxlcc_static, where there is one, is
# the static library beside the shared one.
install(EXPORT pxlcc-targets NAMESPACE pxlcc:: DESTINATION ${PXLCC_PACKAGE_DIR} FILE pxlcc-config.cmake)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/pxlcc-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/pxlcc-config-version.cmake DESTINATION ${PXLCC_PACKAGE_DIR})

# For pkg-config: pxlcc.pc and pxlcore.pc.
file(RELATIVE_PATH PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH PC_INCLUDEDIR ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
file(RELATIVE_PATH PC_LIBDIR ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
if(PXLCC_BUILD_STATIC)
    set(PC_CFLAGS " -DPXLCC_STATIC")
endif()
function(pxlcc_install_pc name library description)
    set(PC_NAME ${name})
    set(PC_LIBRARY ${library})
    set(PC_DESCRIPTION ${description})
    set(PC_REQUIRES ${ARGN})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
pxlcc_install_pc(pxlcc pxlccy8 "Exact, fast conversions of whole images between colour models and layouts" pxlcore)
pxlcc_install_pc(pxlcore pxlcore "What the pxl libraries share")
