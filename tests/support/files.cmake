# Made file trees, and what was there afterwards. C++ alone.
add_library(quillbay_test_files STATIC
  HostileTree.h HostileTree.cpp
  MountNamespace.h MountNamespace.cpp
  TreeSnapshot.h TreeSnapshot.cpp)
target_include_directories(quillbay_test_files PUBLIC ${CMAKE_SOURCE_DIR}/tests)
target_link_libraries(quillbay_test_files PRIVATE quillbay_options)
set_target_properties(quillbay_test_files PROPERTIES AUTOMOC OFF)
