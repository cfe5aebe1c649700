# What `cmake --install` puts where, in two components: runtime, the programs and libraries, and development, what others
# compile and link against.
#   cmake --install out/build/linux --prefix PREFIX [--component runtime]
include(GNUInstallDirs)

# The command line finds the engine from where it lies, and the engine the imaging library beside itself, so the prefix
# may be moved as a whole.
if(NOT WIN32)
    file(RELATIVE_PATH libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(lumbrix-cli PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
    set_target_properties(lumbrix PROPERTIES INSTALL_RPATH "$ORIGIN")
endif()

set(LUMBRIX_RUNTIME lumbrix lumbrix_imaging_library lumbrix-cli)
if(WIN32)
    list(APPEND LUMBRIX_RUNTIME lumbrix_program)
endif()
install(TARGETS ${LUMBRIX_RUNTIME}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime)

install(FILES ${CMAKE_SOURCE_DIR}/imaging/exports/lumbrix.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
if(WIN32)
    install(FILES $<TARGET_LINKER_FILE:lumbrix> DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
endif()
