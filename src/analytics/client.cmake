# The client over the store and the flush, and the manager by which the program uses it.
target_sources(quillbay_analytics PRIVATE
  AnalyticsManager.h AnalyticsManager.cpp
  AutomaticProperties.h AutomaticProperties.cpp
  Group.h Group.cpp
  MainQueue.h MainQueue.cpp
  Marlpost.h Marlpost.cpp
  MarlpostInstance.h MarlpostInstance.cpp
  MarlpostInstanceFlush.cpp MarlpostInstanceIdentity.cpp MarlpostInstanceTracking.cpp
  MarlpostManager.h MarlpostManager.cpp
  MarlpostOptions.h
  People.h People.cpp
  PropertyNotifications.h PropertyNotifications.cpp
  ReadWriteLock.h
  RecordQueue.h
  SessionMetadata.h SessionMetadata.cpp
  Track.h Track.cpp)
