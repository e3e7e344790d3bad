# The client over a folder of the test's own.
add_library(quillbay_test_client STATIC ClientFixture.h ClientFixture.cpp)
target_link_libraries(quillbay_test_client PUBLIC quillbay_test_analytics quillbay_test_main GTest::gtest Qt6::Test
  PRIVATE quillbay_options)
quillbay_test(analytics_client_test
  SOURCES IdentityTest.cpp PeopleTest.cpp TrackingTest.cpp
  LIBRARIES quillbay_test_client)
quillbay_test(analytics_manager_test
  SOURCES AnalyticsManagerTest.cpp ClientFlushTest.cpp
  LIBRARIES quillbay_test_client)
