# What the user launches, likes and hides, and what is new.
target_sources(quillbay_library PRIVATE
  AppFinderLists.cpp
  AppFinderNewlyAdded.cpp
  AppFinderHidden.cpp
  AppSorting.h AppSorting.cpp
  NewlyAdded.h NewlyAdded.cpp)
