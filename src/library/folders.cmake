# Folders, the order of the grid, ranked search, recent documents.
target_sources(quillbay_library PRIVATE
  AppFinderFolders.cpp
  AppFinderGridOrder.cpp
  AppFinderSearch.cpp
  AppFinderRecentFiles.cpp)
