# Objects are cached by what is compiled, not by where: a second build folder, or a clean one, takes them over.
find_program(CCACHE ccache)
if(CCACHE)
  set(cached ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=true ${CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${cached})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${cached})
endif()
