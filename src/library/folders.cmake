# Folders, the order of the grid, ranked search, recent documents.
target_sources(quillbay_library PRIVATE
  AppFinderFolders.cpp
  AppFinderGridOrder.cpp
  AppFinderRecentFiles.cpp
  AppFinderSearch.cpp
  AppFolderReader.h AppFolderReader.cpp
  AppSearch.h AppSearch.cpp
  FolderCache.h FolderCache.cpp
  FolderListWriter.h FolderListWriter.cpp
  FolderOrder.h FolderOrder.cpp
  GridOrder.h GridOrder.cpp
  JsonText.h JsonText.cpp)
