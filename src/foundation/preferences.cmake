# The preference store and the SQLite it is written in.
target_sources(quillbay_foundation PRIVATE
  Database.h Database.cpp
  Statement.h Statement.cpp
  FolderLock.h FolderLock.cpp
  DatabaseFiles.h DatabaseFiles.cpp
  JournalMerge.h JournalMerge.cpp
  PreferenceFile.h PreferenceFile.cpp
  PreferenceStore.h PreferenceStore.cpp)
