# What an installation consists of: the program, and the files by which a desktop finds and starts it.
include(GNUInstallDirs)

install(TARGETS quillbay RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# The message bus starts programs by absolute path.
set(BINDIR ${CMAKE_INSTALL_FULL_BINDIR})
configure_file(${CMAKE_SOURCE_DIR}/assets/org.quillbay.Quillbay.service.in
               ${CMAKE_BINARY_DIR}/org.quillbay.Quillbay.service @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/org.quillbay.Quillbay.service
        DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)

install(FILES ${CMAKE_SOURCE_DIR}/assets/org.quillbay.Quillbay.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/assets/org.quillbay.Quillbay.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

# What asks for the administrator's rights finds its helper by absolute path as well.
install(TARGETS quillbay-elevate RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR})
set(LIBEXECDIR ${CMAKE_INSTALL_FULL_LIBEXECDIR})
configure_file(${CMAKE_SOURCE_DIR}/assets/org.quillbay.Quillbay.policy.in
               ${CMAKE_BINARY_DIR}/org.quillbay.Quillbay.policy @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/org.quillbay.Quillbay.policy
        DESTINATION ${CMAKE_INSTALL_DATADIR}/polkit-1/actions)
