# What a scan finds.
target_sources(quillbay_uninstaller PRIVATE
  ApplicationRows.h ApplicationRows.cpp
  AppResidualFile.h AppResidualFile.cpp
  AppUninstallerScanner.h AppUninstallerScanner.cpp
  DirectorySize.h DirectorySize.cpp
  ProtectedPaths.h ProtectedPaths.cpp
  ResidualCategory.h ResidualCategory.cpp
  ResidualRules.h ResidualRules.cpp
  ResidualScan.h ResidualScan.cpp
  ScanStage.h ScanStage.cpp
  VisibleEntries.h VisibleEntries.cpp)
