# The flow behind the sheet.
quillbay_test(uninstaller_flow
  SOURCES
    ResidualFixture.h ResidualFixture.cpp
    flow/FlowDeletionTest.cpp
    flow/FlowFixture.h flow/FlowFixture.cpp
    flow/FlowPackageTest.cpp
    flow/FlowStageTest.cpp
    flow/ResidualRowsModelTest.cpp
  LIBRARIES quillbay_uninstaller quillbay_test_fakes quillbay_test_files)
