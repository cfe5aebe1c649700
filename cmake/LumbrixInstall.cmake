# What `cmake --install` puts where, in two components: runtime, the programs and libraries, and development, what others
# compile and link against.
#   cmake --install out/build/linux --prefix PREFIX [--component runtime]
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# The command line finds the engine from where it lies, and the engine the imaging library in a folder beside itself, so
# the prefix may be moved as a whole.
if(NOT WIN32)
    file(RELATIVE_PATH libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(lumbrix-cli PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
endif()

set(LUMBRIX_RUNTIME lumbrix-cli)
if(LUMBRIX_PROGRAM)
    list(APPEND LUMBRIX_RUNTIME lumbrix_program)
endif()
install(TARGETS ${LUMBRIX_RUNTIME} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
install(TARGETS lumbrix_imaging_library
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/lumbrix COMPONENT runtime)
install(TARGETS lumbrix EXPORT lumbrix
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(FILES ${CMAKE_SOURCE_DIR}/imaging/exports/lumbrix.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

# The page of the manual and the completion of shells, where the build made them.
foreach(place IN ITEMS man/lumbrix-cli.1:${CMAKE_INSTALL_MANDIR}/man1
        completion/lumbrix-cli:${CMAKE_INSTALL_DATADIR}/bash-completion/completions
        completion/_lumbrix-cli:${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions
        completion/lumbrix-cli.fish:${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
    string(REPLACE ":" ";" place ${place})
    list(POP_FRONT place file)
    install(FILES ${CMAKE_BINARY_DIR}/${file} DESTINATION ${place} COMPONENT runtime OPTIONAL)
endforeach()

# For find_package(lumbrix), which offers lumbrix::lumbrix, and for pkg-config.
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/lumbrix)
install(EXPORT lumbrix NAMESPACE lumbrix:: FILE lumbrixTargets.cmake DESTINATION ${package} COMPONENT development)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/package/lumbrixConfigVersion.cmake COMPATIBILITY SameMajorVersion)
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/package/lumbrixConfig.cmake
    CONTENT "include(\${CMAKE_CURRENT_LIST_DIR}/lumbrixTargets.cmake)\n" @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/package/lumbrixConfig.cmake ${CMAKE_BINARY_DIR}/package/lumbrixConfigVersion.cmake
    DESTINATION ${package} COMPONENT development)
file(RELATIVE_PATH prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(${CMAKE_SOURCE_DIR}/cmake/lumbrix.pc.in ${CMAKE_BINARY_DIR}/package/lumbrix.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/package/lumbrix.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
