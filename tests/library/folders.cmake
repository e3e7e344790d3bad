# Folders, grid order, ranked search and recent documents.
quillbay_test(library_folders_test
  SOURCES AppFolderTextTest.cpp FoldersTest.cpp GridOrderTest.cpp RecentFilesTest.cpp SearchTest.cpp
  LIBRARIES quillbay_library quillbay_test_library)
