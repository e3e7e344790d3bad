# What removes it.
target_sources(quillbay_uninstaller PRIVATE
  AdminPrivileges.h AdminPrivileges.cpp
  CommandLines.h CommandLines.cpp
  DeletionMethod.h
  PutBack.h PutBack.cpp
  Receipt.h Receipt.cpp
  ReceiptStore.h ReceiptStore.cpp
  Removal.h Removal.cpp
  RemovalGuard.h RemovalGuard.cpp
  RemovalItem.h
  TrashName.h TrashName.cpp)
