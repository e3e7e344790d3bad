# The sheet's way from the gate to the result.
target_sources(quillbay_uninstaller PRIVATE
  Deletion.h Deletion.cpp
  PackageAdapter.h PackageAdapter.cpp
  PackageQuestion.h
  ResidualRowsModel.h ResidualRowsModel.cpp
  RowIcons.h RowIcons.cpp
  Uninstaller.h Uninstaller.cpp
  UninstallerFlow.h UninstallerFlow.cpp
  UninstallerServices.h)
