# What a scan finds.
quillbay_test(residual_scan_test
  SOURCES
    AppUninstallerScannerTest.cpp
    DirectorySizeTest.cpp
    LinuxScanTest.cpp
    MacScanTest.cpp
    ProtectedPathsTest.cpp
    ResidualFixture.h ResidualFixture.cpp
    ResidualRulesTest.cpp
  LIBRARIES quillbay_uninstaller quillbay_test_fakes)
