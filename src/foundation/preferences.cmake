# The preference store and the SQLite it is written in.
target_sources(quillbay_foundation PRIVATE)
