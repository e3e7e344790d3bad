# Servers and other programs of a test's own.
add_library(quillbay_test_servers STATIC PrivateBus.h PrivateBus.cpp TestProgram.h TestProgram.cpp XServer.h XServer.cpp)
target_include_directories(quillbay_test_servers PUBLIC ${CMAKE_SOURCE_DIR}/tests)
target_link_libraries(quillbay_test_servers PUBLIC Qt6::Core Qt6::DBus PRIVATE quillbay_options)
