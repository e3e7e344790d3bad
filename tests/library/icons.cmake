quillbay_test(library_icons_test
  SOURCES AppIconLoaderTest.cpp
  LIBRARIES quillbay_library quillbay_test_fakes)
