# What the QML compiler writes for a module is not held to the project's warnings: its functions shadow each other.
# Call it after qt_add_qml_module.
function(quillbay_accept_generated_qml target)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "/\\.rcc/qmlcache/")
  set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
  if(TARGET ${target}_qmlcache)
    target_compile_options(${target}_qmlcache PRIVATE -w)
  endif()
endfunction()
