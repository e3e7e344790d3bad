# Stand-ins for every service of the desktop, driven by the test.
add_library(quillbay_test_fakes STATIC
  FakeApplications.h FakeApplications.cpp
  FakeBiometrics.h FakeBiometrics.cpp
  FakeColorSampler.h
  FakeDesktop.h FakeDesktop.cpp
  FakeDeviceIdentity.h
  FakeFullDiskAccess.h
  FakePackageManager.h FakePackageManager.cpp
  FakePlatform.h FakePlatform.cpp
  FakeRemoval.h FakeRemoval.cpp)
target_include_directories(quillbay_test_fakes PUBLIC ${CMAKE_SOURCE_DIR}/tests)
# A library over them, as the program has it.
add_library(quillbay_test_library STATIC TestLibrary.h TestLibrary.cpp)
target_link_libraries(quillbay_test_library PUBLIC quillbay_library quillbay_test_fakes Qt6::Test PRIVATE quillbay_options)
target_link_libraries(quillbay_test_fakes PUBLIC quillbay_platform Qt6::Core Qt6::Gui PRIVATE quillbay_options)
