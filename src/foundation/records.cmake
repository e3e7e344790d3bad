# What stored records are made of: identifiers and JSON.
find_package(nlohmann_json 3.11 REQUIRED)
target_sources(quillbay_foundation PRIVATE
  Decoding.h
  JsonFields.h JsonFields.cpp
  MoveRule.h
  Uuid.h Uuid.cpp)
target_link_libraries(quillbay_foundation PUBLIC nlohmann_json::nlohmann_json)
