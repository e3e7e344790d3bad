# What removes it.
add_executable(removal_driver removal/removal_driver.cpp)
target_link_libraries(removal_driver PRIVATE quillbay_options quillbay_uninstaller)
set_target_properties(removal_driver PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)

quillbay_test(uninstaller_removal
  SOURCES
    removal/AdminPrivilegesTest.cpp
    removal/KilledRemovalTest.cpp
    removal/PutBackTest.cpp
    removal/ReceiptTest.cpp
    removal/RemovalFixture.h removal/RemovalFixture.cpp
    removal/RemovalGuardTest.cpp
    removal/RemovalNeverTest.cpp
    removal/RemovalTest.cpp
    removal/TrashNameTest.cpp
  LIBRARIES quillbay_uninstaller quillbay_elevate quillbay_test_fakes quillbay_test_files)
target_compile_definitions(uninstaller_removal PRIVATE
  QUILLBAY_ELEVATE="$<TARGET_FILE:quillbay-elevate>"
  QUILLBAY_REMOVAL_DRIVER="$<TARGET_FILE:removal_driver>")
add_dependencies(uninstaller_removal quillbay-elevate removal_driver)

# The whole road through a real polkit, in a mount namespace of its own.
add_test(NAME uninstaller_real_polkit COMMAND /usr/bin/python3 -B
  ${CMAKE_CURRENT_SOURCE_DIR}/removal/real_polkit_test.py
  $<TARGET_FILE:removal_driver> $<TARGET_FILE:quillbay-elevate>
  ${CMAKE_BINARY_DIR}/org.quillbay.Quillbay.policy ${CMAKE_INSTALL_FULL_LIBEXECDIR}/quillbay-elevate)
set_tests_properties(uninstaller_real_polkit PROPERTIES TIMEOUT 180 SKIP_RETURN_CODE 77)
