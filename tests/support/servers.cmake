# Servers of a test's own.
add_library(quillbay_test_servers STATIC XServer.h XServer.cpp)
target_include_directories(quillbay_test_servers PUBLIC ${CMAKE_SOURCE_DIR}/tests)
target_link_libraries(quillbay_test_servers PUBLIC Qt6::Core PRIVATE quillbay_options)
