target_sources(quillbay_library PRIVATE
  AppIconLoader.h AppIconLoader.cpp
  AppIconReader.h AppIconReader.cpp)
