# Recents, favourites, sorting, newly added and hidden applications.
quillbay_test(library_lists_test
  SOURCES AppSortingTest.cpp HiddenAppsTest.cpp NewlyAddedTest.cpp UserListsTest.cpp
  LIBRARIES quillbay_library quillbay_test_library)
