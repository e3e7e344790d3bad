# Sort keys of names.
find_package(ICU REQUIRED COMPONENTS i18n uc)
target_sources(quillbay_foundation PRIVATE CollationKey.h CollationKey.cpp)
target_link_libraries(quillbay_foundation PRIVATE ICU::i18n ICU::uc)
