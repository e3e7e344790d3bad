# What every library, test and benchmark of the project is built with.
add_library(quillbay_options INTERFACE)
target_compile_options(quillbay_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
  -Wcast-align -Wunused -Wimplicit-fallthrough -Werror)
target_compile_definitions(quillbay_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_JAVA_STYLE_ITERATORS QT_NO_KEYWORDS
  QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(QUILLBAY_SANITIZE)
  target_compile_options(quillbay_options INTERFACE
    -fsanitize=${QUILLBAY_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(quillbay_options INTERFACE -fsanitize=${QUILLBAY_SANITIZE})
  # GCC sees uninitialised reads that are none once the sanitizers have rewritten the code.
  target_compile_options(quillbay_options INTERFACE -Wno-maybe-uninitialized)
endif()

# A room of src/: one static library, included as "room/Header.h".
function(quillbay_room name)
  add_library(${name} STATIC ${ARGN})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PRIVATE quillbay_options)
  # QML modules register some of a room's classes under their own names: they need what moc knows of them.
  qt_extract_metatypes(${name})
endfunction()

# A test program: quillbay_test(name SOURCES a.cpp LIBRARIES quillbay_x). It runs with a home of its own.
function(quillbay_test name)
  cmake_parse_arguments(TEST "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE quillbay_options ${TEST_LIBRARIES} quillbay_test_main GTest::gmock)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 180
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0;ASAN_OPTIONS=detect_stack_use_after_return=1;UBSAN_OPTIONS=print_stacktrace=1;TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/tsan.supp:print_suppressions=0:die_after_fork=0")
endfunction()
