# The screens of the tools: part of the module Quillbay.Ui, whose folder includes this.
set(tool_screens
  CodeSnippetForm.qml
  CodeSnippetItemView.qml
  CodeSnippetsPopoverView.qml
  ColorPickerPopoverView.qml
  MeasurePopoverView.qml
  MeasurementRow.qml
  NoteSwatch.qml
  PlainEditor.qml
  PopoverHeading.qml
  QRCodeCard.qml
  QRGeneratorPopoverView.qml
  RecentColor.qml
  RecentHeading.qml
  RulerCapsule.qml
  RulerView.qml
  SnippetCode.qml
  StickyNotesPopoverView.qml
  SymbolButton.qml
  SymbolPushButton.qml
  TextCursor.qml
  ToolField.qml)
foreach(screen IN LISTS tool_screens)
  set_source_files_properties(${CMAKE_SOURCE_DIR}/src/tools/${screen} PROPERTIES QT_RESOURCE_ALIAS ${screen})
endforeach()
list(TRANSFORM tool_screens PREPEND ${CMAKE_SOURCE_DIR}/src/tools/)
qt_target_qml_sources(quillbay_ui QML_FILES ${tool_screens})
